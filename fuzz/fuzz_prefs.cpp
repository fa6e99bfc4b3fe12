// Any preferences file loads, and what it loads is saved and loaded again
// unchanged: decoding the encoded record gives the same settings.
#include "fuzzcheck.h"
#include "shell/preferences.h"
#include "window/mainwindow.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    using namespace verlis;
    const QByteArray bytes = inputBytes(data, size);
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
