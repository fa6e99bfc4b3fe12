#include "preferencesfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

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
    // Something else in the record's place (a folder, a pipe that would block
    // the write, a file too long to be a record) is left as it is: the
    // settings go unsaved. A link is judged by what it leads to.
    const QFileInfo existing(file);
    if (existing.exists() && (!existing.isFile() || existing.size() > MaxRecordBytes))
        return false;
    // The new record goes to a temporary file beside the old one and replaces
    // it by a rename once it is on disk, so a kill or a full disk at any
    // moment leaves the old record or the new one, never a cut one. A link
    // stays a link: the record it leads to is the one replaced.
    QSaveFile out(existing.exists() ? existing.canonicalFilePath() : file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    // commit() misses an error of the flush it does itself and would put a
    // cut record in place: flushed here, a failure leaves the temporary file
    // to be discarded.
    const QByteArray record = encodePreferences(prefs);
    if (!(out.write(record) == record.size() && out.flush() && out.commit()))
        return false;
    // A save killed between naming its temporary file and the rename leaves
    // that file behind, named after the record: gone with the next save.
    const QFileInfo saved(out.fileName());
    for (const QFileInfo &stray : saved.dir().entryInfoList(
             {saved.fileName() + QStringLiteral(".??????")}, QDir::Files | QDir::Hidden))
        QFile::remove(stray.filePath());
    return true;
}

} // namespace verlis
