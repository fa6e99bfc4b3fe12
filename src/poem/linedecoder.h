#pragma once

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <optional>

namespace verlis {

// Decodes lines one at a time in one encoding, so that a fault stays in its
// line: each line is decoded with its line end, and a line that leaves the
// decoder inside a character or shifted (ISO-2022-JP) gets a new decoder
// after it. The decoder is made once, at its first line.
class LineDecoder {
public:
    explicit LineDecoder(QByteArray encoding) : m_encoding(std::move(encoding)) {}

    QString decode(const QByteArray &line)
    {
        if (!m_decoder)
            m_decoder.emplace(m_encoding.constData(), QStringConverter::Flag::Stateless);
        QString text = m_decoder->decode(line + '\n');
        if (text.endsWith(QLatin1Char('\n')))
            text.chop(1);
        else
            m_decoder.reset();
        return text;
    }

    // The start of a cut line, decoded no further than gives `length`
    // characters: the rest would be cut off anyway. Where the cut left half a
    // character, it shows as nothing.
    QString decodeStart(const QByteArray &line, qsizetype length) const
    {
        QStringDecoder decoder(m_encoding.constData());
        QString text;
        for (qsizetype at = 0; at < line.size() && text.size() < length; at += length)
            text +=
                decoder.decode(QByteArrayView(line).sliced(at, std::min(length, line.size() - at)));
        return text;
    }

    const QByteArray &encoding() const { return m_encoding; }

private:
    QByteArray m_encoding;
    std::optional<QStringDecoder> m_decoder;
};

} // namespace verlis
