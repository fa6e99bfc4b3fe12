#pragma once

#include "color.h"
#include "limits.h"

#include <QByteArray>
#include <QRect>
#include <QString>

namespace verlis {

// The settings that outlast a run. Zero values until loadPrefs normalises them.
struct Preferences {
    // The font name's bytes, as the record held them or as picked: they go
    // back to the record as they are, whatever their encoding.
    QByteArray mainfont;
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

// A picked font name's bytes: UTF-8, cut at a character boundary so that
// the length fits one byte.
QByteArray fontNameBytes(const QString &name);

// The font name as text: UTF-8 where its bytes are UTF-8, else one character
// to a byte, so that a name stored as Latin-1 still finds its font.
QString fontNameText(const QByteArray &bytes);

} // namespace verlis
