#include "preferencesfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

namespace verlis {

PreferencesFile::PreferencesFile(QString folder) : m_folder(std::move(folder)) {}

QString PreferencesFile::path() const
{
    if (m_folder.isEmpty())
        return {};
    return QDir(m_folder).filePath(QString::fromLatin1(FileName));
}

Preferences PreferencesFile::read() const
{
    const QString file = path();
    if (file.isEmpty() || !QFileInfo(file).isFile())
        return {};
    QFile in(file);
    // A file that can't be opened counts as none.
    if (!in.open(QIODevice::ReadOnly))
        return {};
    return decodePreferences(in.read(MaxRecordBytes));
}

bool PreferencesFile::write(const Preferences &prefs) const
{
    const QString file = path();
    if (file.isEmpty() || !QDir().mkpath(m_folder))
        return false;
    // A folder, a pipe or a device in the record's place is left alone, and
    // the settings go unsaved. A link is judged by what it leads to, and
    // what it leads to is replaced: the link stays a link.
    const QFileInfo existing(file);
    if (existing.exists() && !existing.isFile())
        return false;
    const QString target = existing.exists() ? existing.canonicalFilePath() : file;
    const QByteArray record = encodePreferences(prefs);
    // The new record goes to a temporary file beside the old one and replaces
    // it whole by a rename once it is on disk, so that a kill or a full disk
    // at any moment leaves the old record or the new one, never a cut one.
    QSaveFile out(target);
    if (!out.open(QIODevice::WriteOnly))
        return existing.exists() && writeInPlace(target, record);
    // commit() looks at neither its own flush nor its sync to disk: both are
    // checked here, and a record that may not be on disk replaces nothing.
    // The temporary file, all this save made, goes with `out`.
    if (out.write(record) != record.size() || !out.flush() || ::fdatasync(out.handle()) != 0) {
        out.cancelWriting();
        return false;
    }
    return out.commit();
}

// For a folder that takes no new file, a locked-down home say: the record
// is written over the old one, and only then cut to its length.
bool PreferencesFile::writeInPlace(const QString &target, const QByteArray &record)
{
    QFile out(target);
    return out.open(QIODevice::ReadWrite) && out.write(record) == record.size() && out.flush() &&
           out.resize(record.size()) && ::fdatasync(out.handle()) == 0;
}

} // namespace verlis
