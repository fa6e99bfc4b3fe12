#pragma once

#include <QFile>
#include <QStringList>

// Writes the lines, each ended by a line feed; true when all of it was written.
inline bool writeBook(const QString &path, const QStringList &lines)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    const QByteArray bytes = lines.isEmpty() ? QByteArray() : (lines.join('\n') + '\n').toUtf8();
    return file.write(bytes) == bytes.size();
}
