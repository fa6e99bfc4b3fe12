#include "preferences.h"

#include <QtEndian>

#include <cstring>

namespace verlis {

namespace {

class Writer {
public:
    void uint8(quint8 v) { m_bytes.append(char(v)); }
    void int8(qint8 v) { m_bytes.append(char(v)); }
    void int16(qint16 v)
    {
        char b[2];
        qToBigEndian(v, b);
        m_bytes.append(b, 2);
    }
    void float64(double v)
    {
        quint64 bits;
        std::memcpy(&bits, &v, sizeof bits);
        char b[8];
        qToBigEndian(bits, b);
        m_bytes.append(b, 8);
    }
    void pstring(const QByteArray &bytes)
    {
        uint8(quint8(bytes.size()));
        m_bytes.append(bytes);
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

// Past the end every read gives zero, which the normalisation turns into a default.
class Reader {
public:
    explicit Reader(const QByteArray &bytes) : m_bytes(bytes) {}
    quint8 uint8() { return quint8(first(take(1))); }
    qint8 int8() { return qint8(first(take(1))); }
    qint16 int16()
    {
        const QByteArray b = take(2);
        return b.size() == 2 ? qFromBigEndian<qint16>(b.constData()) : 0;
    }
    double float64()
    {
        const QByteArray b = take(8);
        if (b.size() != 8)
            return 0.0;
        const quint64 bits = qFromBigEndian<quint64>(b.constData());
        double v;
        std::memcpy(&v, &bits, sizeof v);
        return v;
    }
    QByteArray pstring() { return take(uint8()); }

private:
    static char first(const QByteArray &b) { return b.isEmpty() ? char(0) : b[0]; }
    QByteArray take(qsizetype n)
    {
        const QByteArray part = m_bytes.mid(m_at, n);
        m_at += n;
        return part.size() == n ? part : QByteArray();
    }
    const QByteArray &m_bytes;
    qsizetype m_at = 0;
};

} // namespace

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

QByteArray encodePreferences(const Preferences &p)
{
    Writer w;
    w.uint8(p.mainSize);
    w.pstring(fontNameBytes(p.mainfont));
    w.int16(p.MWLeft);
    w.int16(p.MWTop);
    w.int16(p.MWWidth);
    w.int16(p.MWHeight);
    for (bool flag : {p.mainBold, p.mainItalic, p.mainUnderline, p.BshowNumber})
        w.int8(flag ? 1 : 0);
    for (Color c : {p.ColorText, p.ColorBack}) {
        w.float64(readColorHue(c));
        w.float64(readColorSaturation(c));
        w.float64(readColorValue(c));
    }
    return w.bytes();
}

Preferences decodePreferences(const QByteArray &bytes)
{
    Reader r(bytes);
    Preferences p;
    p.mainSize = r.uint8();
    // Bytes that are no UTF-8 read as U+FFFD, three bytes each in the next
    // record: the name is cut now as that record will cut it, so that what
    // is loaded is what is saved.
    p.mainfont = QString::fromUtf8(fontNameBytes(QString::fromUtf8(r.pstring())));
    p.MWLeft = r.int16();
    p.MWTop = r.int16();
    p.MWWidth = r.int16();
    p.MWHeight = r.int16();
    // Only the byte 1 means true.
    p.mainBold = r.int8() == 1;
    p.mainItalic = r.int8() == 1;
    p.mainUnderline = r.int8() == 1;
    p.BshowNumber = r.int8() == 1;
    for (Color *c : {&p.ColorText, &p.ColorBack}) {
        const double h = r.float64();
        const double s = r.float64();
        const double v = r.float64();
        *c = HSV(h, s, v, 0);
    }
    return p;
}

void normalisePreferences(Preferences &p, const SizeLimits &limits)
{
    if (p.mainSize > 64 || p.mainSize < 1)
        p.mainSize = 11;
    if (p.mainfont.isEmpty())
        p.mainfont = QStringLiteral("system");
    if (p.MWLeft == 0 && p.MWTop == 0 && p.MWWidth == 0 && p.MWHeight == 0) {
        p.MWLeft = 100;
        p.MWTop = 100;
        p.MWWidth = 552;
        p.MWHeight = 516;
    }
    if (p.MWLeft < -100 || p.MWLeft > 3000)
        p.MWLeft = 100;
    if (p.MWTop < -100 || p.MWTop > 3000)
        p.MWTop = 100;
    if (p.MWWidth < limits.minWidth || p.MWWidth > limits.maxWidth)
        p.MWWidth = 552;
    if (p.MWHeight < limits.minHeight || p.MWHeight > limits.maxHeight)
        p.MWHeight = 516;
    if (p.ColorText == p.ColorBack) {
        p.ColorText = HSV(0, 0, 0, 0);
        p.ColorBack = HSV(0, 0, 1.0, 0);
    }
}

} // namespace verlis
