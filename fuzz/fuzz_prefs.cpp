// Any preferences file loads, and what it loads is saved and loaded again
// unchanged: decoding the encoded record gives the same settings, and the
// font name's bytes as they were.
#include "fuzzcheck.h"
#include "settings/preferences.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, size_t size)
{
    using namespace verlis;
    const QByteArray bytes = inputBytes(data, size);
    Preferences loaded = decodePreferences(bytes);
    normalisePreferences(loaded, WindowLimits);

    const QByteArray record = encodePreferences(loaded);
    check(record.size() >= RecordFixedBytes && record.size() <= MaxRecordBytes,
          "a record of the wrong size");
    check(quint8(record[1]) == record.size() - RecordFixedBytes,
          "the length byte does not match the name");
    const qsizetype n = bytes.size() > 1 ? quint8(bytes[1]) : 0;
    check(n == 0 || bytes.size() < 2 + n || record.mid(2, n) == bytes.mid(2, n),
          "a whole font name is not written back byte for byte");
    const Preferences again = decodePreferences(record);
    check(again == loaded, "the saved record loads as other settings");
    Preferences renormalised = again;
    normalisePreferences(renormalised, WindowLimits);
    check(renormalised == again, "the normalisation is not settled after one pass");
    return 0;
}
