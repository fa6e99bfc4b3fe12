#include "preferencesfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace verlis {

namespace {

// A file this much larger than any record is no record to overwrite in place.
constexpr qint64 LargestHeldFile = 1 << 20;

// Two runs that end together, as at a logout, take turns in the folder, as
// their temporary files share one name. A turn not had within five seconds
// is taken all the same: a save never waits for good.
void takeTurn(int folder)
{
    for (int waits = 0;
         waits < 500 && ::flock(folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK; ++waits)
        ::usleep(10'000);
}

// In one call: a short write is a failed one.
bool writeAt(int fd, const QByteArray &bytes)
{
    return ::pwrite(fd, bytes.constData(), size_t(bytes.size()), 0) == bytes.size();
}

} // namespace

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
    const QFileInfo target(existing.exists() ? existing.canonicalFilePath() : file);
    const QByteArray targetName = QFile::encodeName(target.fileName());
    const QByteArray record = encodePreferences(prefs);
    const int folder =
        ::open(QFile::encodeName(target.path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return existing.exists() && writeInPlace(target.filePath(), record);
    const auto closeFolder = qScopeGuard([folder] { ::close(folder); });
    takeTurn(folder);
    // The new record goes to a file of the program's own name beside the old
    // one and replaces it whole by a rename once it is on disk, so that a kill
    // or a full disk at any moment leaves the old record or the new one, and
    // at most that one file. One there now was left by a run killed while
    // saving: it goes first, unopened, whatever it is, a link even.
    ::unlinkat(folder, TempFileName, 0);
    const int out = ::openat(folder, TempFileName, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (out < 0)
        return existing.exists() && writeInPlace(target.filePath(), record);
    struct stat old {};
    // The new record keeps the old one's permissions.
    bool saved = (!existing.exists() || (::fstatat(folder, targetName.constData(), &old, 0) == 0 &&
                                         ::fchmod(out, old.st_mode & 0777) == 0)) &&
                 writeAt(out, record) && ::fdatasync(out) == 0;
    saved = ::close(out) == 0 && saved &&
            ::renameat(folder, TempFileName, folder, targetName.constData()) == 0;
    if (!saved) {
        ::unlinkat(folder, TempFileName, 0);
        return false;
    }
    // The rename reaches the disk with the folder; a crash before that brings
    // back the old record, whole.
    ::fsync(folder);
    return true;
}

// For a folder that takes no new file, a locked-down home say, or none just
// now, as a full disk or a folder in the temporary file's place: the record
// is overwritten where it stands, the new one over the old in one write,
// which a kill does not split, as it lies within the file's first page. A
// longer old record is cut only after that: until then its tail lies past
// the new record's end, where no reading looks. Where the write, the cut or
// the sync fails, the old bytes go back.
bool PreferencesFile::writeInPlace(const QString &target, const QByteArray &record)
{
    const int fd = ::open(QFile::encodeName(target).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return false;
    const auto closeFile = qScopeGuard([fd] { ::close(fd); });
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_size > LargestHeldFile)
        return false;
    QByteArray old(qsizetype(st.st_size), Qt::Uninitialized);
    if (::pread(fd, old.data(), size_t(old.size()), 0) != old.size())
        return false;
    if (writeAt(fd, record) &&
        (old.size() <= record.size() || ::ftruncate(fd, record.size()) == 0) &&
        ::fdatasync(fd) == 0)
        return true;
    writeAt(fd, old);
    [[maybe_unused]] const bool cut =
        record.size() <= old.size() || ::ftruncate(fd, old.size()) == 0;
    ::fdatasync(fd);
    return false;
}

} // namespace verlis
