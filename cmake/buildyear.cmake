# Writes the year of the build into OUT, at build time and not at configure
# time, so that a build folder rebuilt in a later year shows that year.
# string(TIMESTAMP) honours SOURCE_DATE_EPOCH for reproducible builds. The
# file is rewritten only when the year changes, so nothing else rebuilds.
string(TIMESTAMP year "%Y" UTC)
file(CONFIGURE OUTPUT "${OUT}" CONTENT "#define VERLIS_BUILD_YEAR ${year}\n" @ONLY)
