#pragma once

#include <QString>
#include <QStringList>

namespace verlis {

struct FileType {
    QString Name;
    QStringList Extensions;
    QString MacType;
    QString MacCreator;

    // The filter of an open dialog: the type's name with its patterns.
    QString dialogFilter() const;
};

// The program's two file types: plain text books and the preferences file.
namespace FileTypes1 {
const FileType &Text();
const FileType &Pref();
} // namespace FileTypes1

} // namespace verlis
