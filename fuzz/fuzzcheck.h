#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>

// A property that fails ends the run as a finding, saying which.
inline void check(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "finding: %s\n", what);
        std::abort();
    }
}

// The fuzzer's input, not copied.
inline QByteArray inputBytes(const unsigned char *data, size_t size)
{
    return QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
}
