#include "preferences.h"

#include <QDataStream>
#include <QIODevice>
#include <QStringDecoder>

namespace verlis {

QByteArray fontNameBytes(const QString &name)
{
    QByteArray bytes = name.toUtf8();
    if (bytes.size() <= MaxFontNameBytes)
        return bytes;
    qsizetype cut = MaxFontNameBytes;
    while (cut > 0 && (quint8(bytes[cut]) & 0xC0) == 0x80) // a continuation byte
        --cut;
    return bytes.left(cut);
}

QString fontNameText(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

// QDataStream writes big-endian integers and IEEE doubles by default, the
// record's own form; a read past the end gives zero, which the normalisation
// turns into a default.
QByteArray encodePreferences(const Preferences &p)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    // A picked name was cut to fit when picked; a record's name fits.
    const QByteArray name = p.mainfont.left(MaxFontNameBytes);
    out << p.mainSize << quint8(name.size());
    out.writeRawData(name.constData(), int(name.size()));
    out << p.MWLeft << p.MWTop << p.MWWidth << p.MWHeight;
    for (bool flag : {p.mainBold, p.mainItalic, p.mainUnderline, p.BshowNumber})
        out << qint8(flag ? 1 : 0);
    for (Color c : {p.ColorText, p.ColorBack})
        out << readColorHue(c) << readColorSaturation(c) << readColorValue(c);
    return bytes;
}

Preferences decodePreferences(const QByteArray &bytes)
{
    QDataStream in(bytes);
    Preferences p;
    quint8 nameLength = 0;
    in >> p.mainSize >> nameLength;
    p.mainfont.resize(nameLength);
    if (in.readRawData(p.mainfont.data(), nameLength) != nameLength) {
        p.mainfont.clear();
        in.setStatus(QDataStream::ReadPastEnd);
    }
    in >> p.MWLeft >> p.MWTop >> p.MWWidth >> p.MWHeight;
    // Only the byte 1 means true.
    for (bool *flag : {&p.mainBold, &p.mainItalic, &p.mainUnderline, &p.BshowNumber}) {
        qint8 byte = 0;
        in >> byte;
        *flag = byte == 1;
    }
    for (Color *c : {&p.ColorText, &p.ColorBack}) {
        double h = 0, s = 0, v = 0;
        in >> h >> s >> v;
        *c = HSV(h, s, v, 0);
    }
    return p;
}

void normalisePreferences(Preferences &p, const SizeLimits &limits)
{
    if (p.mainSize > LargestTextSize || p.mainSize < SmallestTextSize)
        p.mainSize = DefaultTextSize;
    if (p.mainfont.isEmpty())
        p.mainfont = QByteArrayLiteral("system");
    if (p.MWLeft == 0 && p.MWTop == 0 && p.MWWidth == 0 && p.MWHeight == 0) {
        p.MWLeft = DefaultLeft;
        p.MWTop = DefaultTop;
        p.MWWidth = DefaultWidth;
        p.MWHeight = DefaultHeight;
    }
    if (p.MWLeft < LowestPosition || p.MWLeft > HighestPosition)
        p.MWLeft = DefaultLeft;
    if (p.MWTop < LowestPosition || p.MWTop > HighestPosition)
        p.MWTop = DefaultTop;
    if (p.MWWidth < limits.minWidth || p.MWWidth > limits.maxWidth)
        p.MWWidth = DefaultWidth;
    if (p.MWHeight < limits.minHeight || p.MWHeight > limits.maxHeight)
        p.MWHeight = DefaultHeight;
    if (p.ColorText == p.ColorBack) {
        p.ColorText = HSV(0, 0, 0, 0);
        p.ColorBack = HSV(0, 0, 1.0, 0);
    }
}

} // namespace verlis
