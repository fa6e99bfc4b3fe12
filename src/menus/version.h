#pragma once

#include <QString>

namespace verlis {

// What the program says of itself: its version, the holder word shown as
// its copyright, and the year it was built.
struct VersionData {
    QString ShortVersion;
    QString LongVersion;
    int buildYear;
};

const VersionData &versionData();

} // namespace verlis
