// Any preferences file loads, and what it loads is saved and loaded again
// unchanged: decoding the encoded record gives the same settings.
#include "shell/preferences.h"
#include "window/mainwindow.h"

#include <cstdio>
#include <cstdlib>

namespace {

void check(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "fuzz_prefs: %s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    using namespace verlis;
    const QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    Preferences loaded = decodePreferences(bytes);
    normalisePreferences(loaded, mainWindow::Limits);

    const QByteArray record = encodePreferences(loaded);
    check(record.size() >= PreferencesFixedBytes &&
              record.size() <= PreferencesFixedBytes + MaxFontNameBytes,
          "a record of the wrong size");
    check(quint8(record[1]) == record.size() - PreferencesFixedBytes,
          "the length byte does not match the name");
    const Preferences again = decodePreferences(record);
    check(again == loaded, "the saved record loads as other settings");
    Preferences renormalised = again;
    normalisePreferences(renormalised, mainWindow::Limits);
    check(renormalised == again, "the normalisation is not settled after one pass");
    return 0;
}
