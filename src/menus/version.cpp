#include "version.h"

#include "buildyear.h"

namespace verlis {

const VersionData &versionData()
{
    static const VersionData data{QStringLiteral(VERLIS_VERSION), QStringLiteral("Verlis"),
                                  VERLIS_BUILD_YEAR};
    return data;
}

} // namespace verlis
