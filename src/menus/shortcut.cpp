#include "shortcut.h"

#include <QStringList>

namespace verlis {

QKeySequence keySequenceFor(const QString &shortcut)
{
    if (shortcut.isEmpty())
        return {};
    // The design form joins with '+', the run-time form with '-'.
    const QChar separator =
        shortcut.contains(QLatin1Char('+')) ? QLatin1Char('+') : QLatin1Char('-');
    const QStringList tokens = shortcut.split(separator);
    QStringList portable;
    for (qsizetype i = 0; i + 1 < tokens.size(); ++i) {
        const QString token = tokens[i].toLower();
        if (token == QLatin1String("cmd") || token == QLatin1String("command"))
            portable << QStringLiteral("Ctrl");
        else if (token == QLatin1String("control"))
            portable << QStringLiteral("Meta");
        else if (token == QLatin1String("option"))
            portable << QStringLiteral("Alt");
        else if (token == QLatin1String("shift"))
            portable << QStringLiteral("Shift");
    }
    portable << tokens.constLast().toUpper();
    return QKeySequence::fromString(portable.join(QLatin1Char('+')), QKeySequence::PortableText);
}

} // namespace verlis
