#pragma once

#include "preferences.h"

#include <QString>

namespace verlis {

// The file that keeps the settings between runs: "Verlis Preferences" in a
// folder, the user's configuration folder in a real run.
class PreferencesFile {
public:
    static constexpr const char *FileName = "Verlis Preferences";
    // Where a save keeps the new record until it replaces the old one, beside
    // it: a name of the program's own, which no save leaves behind.
    static constexpr const char *TempFileName = "Verlis Preferences.saving";

    // An empty folder name stands for none: nothing is read or written.
    explicit PreferencesFile(QString folder);

    QString path() const;

    // The record as stored, not yet normalised: zero values where there is
    // no record or it can't be read.
    Preferences read() const;

    // Replaces the record with `prefs`; false where the old one was left.
    bool write(const Preferences &prefs) const;

private:
    static bool writeInPlace(const QString &target, const QByteArray &record);

    QString m_folder;
};

} // namespace verlis
