#pragma once

#include <QString>
#include <QStringList>

namespace verlis {

struct FileType {
    QString Name;
    QStringList Extensions;

    // The filter of an open dialog: the type's name with its patterns.
    QString dialogFilter() const;
};

// The kind of file a book is read from.
namespace FileTypes1 {
const FileType &Text();
} // namespace FileTypes1

} // namespace verlis
