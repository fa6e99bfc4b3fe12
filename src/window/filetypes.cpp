#include "filetypes.h"

namespace verlis {

QString FileType::dialogFilter() const
{
    QStringList patterns;
    for (const QString &extension : Extensions)
        patterns << QLatin1Char('*') + extension;
    return patterns.isEmpty() ? Name : Name + QStringLiteral(" (") + patterns.join(' ') + ')';
}

namespace FileTypes1 {

const FileType &Text()
{
    static const FileType type{
        QStringLiteral("text/plain"),
        QStringLiteral(".asc;.ascii;.bas;.c;.class;.cp;.cpp;.h;.hp;.hpp;.i3;.java;.m2;.m3;.mak;"
                       ".text;.txt")
            .split(';')};
    return type;
}

} // namespace FileTypes1

} // namespace verlis
