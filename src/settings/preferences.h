#pragma once

#include "color.h"
#include "limits.h"

#include <QByteArray>
#include <QRect>
#include <QString>

namespace verlis {

// The settings that outlast a run. Zero values until loadPrefs normalises them.
struct Preferences {
    QString mainfont;
    quint8 mainSize = 0;
    qint16 MWWidth = 0;
    qint16 MWHeight = 0;
    qint16 MWLeft = 0;
    qint16 MWTop = 0;
    bool mainBold = false;
    bool mainItalic = false;
    bool mainUnderline = false;
    bool BshowNumber = false;
    Color ColorText = 0;
    Color ColorBack = 0;

    bool operator==(const Preferences &) const = default;
};

// The window's place and size as the record has them.
inline QRect storedGeometry(const Preferences &p)
{
    return QRect(p.MWLeft, p.MWTop, p.MWWidth, p.MWHeight);
}

// The file's record: size, font name with a length byte, left, top, width,
// height, four style bytes, then text and background colour as hue,
// saturation, value. Integers and doubles are big-endian.
QByteArray encodePreferences(const Preferences &prefs);

// Reads the fields in file order. A short file reads as zeros past its end.
Preferences decodePreferences(const QByteArray &bytes);

// Turns zero, empty and out-of-range values into the defaults.
void normalisePreferences(Preferences &prefs, const SizeLimits &limits);

// The font name's bytes in the file: UTF-8, cut at a character boundary so
// that the length fits one byte.
QByteArray fontNameBytes(const QString &name);

} // namespace verlis
