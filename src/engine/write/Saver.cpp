#include "engine/write/Saver.h"

#include "document/XdwApi.h"
#include "engine/FormatError.h"
#include "engine/Tlv.h"
#include "engine/write/Emit.h"
#include "engine/write/Lh5Encode.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace xdw {

namespace {

constexpr qint64 MaxFileSize = 2LL * 1024 * 1024 * 1024;
constexpr qint64 MaxProperties = 64LL * 1024 * 1024;
constexpr quint8 TagSegment = 0x61;
constexpr quint8 TagPropertiesPacked = 0x63;
constexpr quint8 TagEntry = 0x64;
constexpr int TemporaryTries = 100;

[[noreturn]] void Fail(qint32 vCode, const QString& vReason)
{
    throw FormatError{vCode, vReason};
}

QString ErrnoText(int vError)
{
    return QString::fromLocal8Bit(std::strerror(vError));
}

// The runtime's code for a failed write or rename.
qint32 WriteCode(int vError)
{
    switch (vError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return XdwResult::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
        return XdwResult::NoPermission;
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
        return XdwResult::BadPathName;
    default:
        return XdwResult::WriteFault;
    }
}

QByteArray Header(int vGeneration, quint32 vRootKind)
{
    QByteArray header = QByteArray::fromHex("600E820107800300C013830401 0D0A01");
    header[4] = static_cast<char>(vGeneration);
    header[9] = static_cast<char>(vRootKind & 0xFF);
    return header;
}

// The segment a save appends at vAt: the entries added since the base, the record tree
// compressed, and the trailer that makes them the file's current state.
QByteArray Segment(const EditableFile& vFile, qint64 vAt, qint64 vSuperseded)
{
    using namespace emit;
    const QByteArray records = WriteRecords(vFile.root);
    if (records.size() > MaxProperties)
        Fail(XdwResult::WriteFault, QStringLiteral("%1 bytes of records are more than a reader takes").arg(records.size()));
    // The one call of the compressor.
    const QByteArray stored = lh5::Compress(records);

    // Entries hold whole page pictures: each body is copied once, into a buffer sized first.
    qsizetype total = 0;
    for (const QByteArray& body : vFile.added)
        total += body.size() + 24;
    QByteArray entries;
    entries.reserve(total);
    std::vector<qint64> relative;
    for (const QByteArray& body : vFile.added) {
        relative.push_back(entries.size());
        const QByteArray check = Tlv(0x81, Be32(CheckValue(body)));
        const QByteArray length = Length(body.size());
        entries += static_cast<char>(TagEntry);
        entries += Length(check.size() + 1 + length.size() + body.size());
        entries += check;
        entries += static_cast<char>(0x82);
        entries += length;
        entries += body;
    }
    const std::vector<qint64> kept = vFile.baseContainer ? vFile.baseContainer->EntryOffsets() : std::vector<qint64>();
    auto trailer = [&](qint64 vContentStart) {
        QByteArray offsets;
        for (qint64 offset : kept)
            offsets += Le32(static_cast<quint32>(offset));
        for (qint64 offset : relative)
            offsets += Le32(static_cast<quint32>(vContentStart + offset));
        const qint64 count = static_cast<qint64>(kept.size() + relative.size());
        QByteArray fields = Tlv(0x80, Int(count));
        if (count > 0)
            fields += Tlv(0x81, offsets);
        fields += Tlv(0x82, Int(vSuperseded)) + Tlv(0x83, Int(records.size()))
            + Tlv(0x84, Int(stored.size())) + Tlv(0x85, Be32(CheckValue(stored)));
        // The last field gives the length of the whole value, itself included: 86 04 + 4 bytes.
        fields += Tlv(0x86, Le32(static_cast<quint32>(fields.size() + 6)));
        return Tlv(vFile.generation >= 10 ? 0x68 : 0x65, fields);
    };
    const QByteArray properties = Tlv(TagPropertiesPacked, stored);
    // Entry offsets are absolute, so they wait for the segment header's size; the trailer's own
    // size does not depend on their values.
    const qint64 contentSize = entries.size() + properties.size() + trailer(0).size();
    const QByteArray header = QByteArray(1, static_cast<char>(TagSegment)) + Length(contentSize);
    const QByteArray end = trailer(vAt + header.size());
    QByteArray segment;
    segment.reserve(header.size() + contentSize);
    segment += header;
    segment += entries;
    segment += properties;
    segment += end;
    return segment;
}

class Descriptor {
public:
    explicit Descriptor(int vFd) : fd_(vFd) {}
    ~Descriptor()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return fd_; }
    int Release() { return std::exchange(fd_, -1); }

private:
    int fd_;
};

// A file another program holds under an exclusive lock is in use, as the reader sees it.
void RefuseLocked(const QByteArray& vPath)
{
    const Descriptor fd(::open(vPath.constData(), O_RDONLY | O_CLOEXEC));
    if (fd.Get() >= 0 && ::flock(fd.Get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        Fail(XdwResult::FileInUse, QStringLiteral("the file is in use"));
}

void WriteAll(int vFd, const QByteArray& vBytes)
{
    qsizetype done = 0;
    while (done < vBytes.size()) {
        const ssize_t n = ::write(vFd, vBytes.constData() + done, static_cast<size_t>(vBytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            const int error = n < 0 ? errno : ENOSPC;
            Fail(WriteCode(error), QStringLiteral("cannot write the file: ") + ErrnoText(error));
        }
        done += n;
    }
    if (::fsync(vFd) != 0)
        Fail(WriteCode(errno), QStringLiteral("cannot write the file: ") + ErrnoText(errno));
}

// Writes vBytes beside vTarget and renames them over it; with vReplace false an existing
// target is refused, also when it appears while we write.
void WriteReplacing(const QString& vTarget, const QByteArray& vBytes, bool vReplace)
{
    const QByteArray target = QFile::encodeName(vTarget);
    struct stat existing {};
    const bool exists = ::stat(target.constData(), &existing) == 0;
    if (exists && !vReplace)
        Fail(XdwResult::FileExists, QStringLiteral("%1 exists already").arg(vTarget));
    if (exists)
        RefuseLocked(target);

    const QFileInfo info(vTarget);
    const QByteArray folder = QFile::encodeName(info.absolutePath());
    QByteArray temporary;
    int fd = -1;
    for (int i = 0; i < TemporaryTries && fd < 0; ++i) {
        temporary = folder + "/." + QFile::encodeName(info.fileName()) + '.'
            + QByteArray::number(::getpid()) + '.' + QByteArray::number(i);
        fd = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            Fail(WriteCode(errno), QStringLiteral("cannot create a file in %1: %2")
                                       .arg(info.absolutePath(), ErrnoText(errno)));
    }
    if (fd < 0)
        Fail(XdwResult::WriteFault, QStringLiteral("no free temporary name in ") + info.absolutePath());
    Descriptor file(fd);
    try {
        if (exists)
            (void)::fchmod(file.Get(), existing.st_mode & 07777);
        WriteAll(file.Get(), vBytes);
        if (::close(file.Release()) != 0)
            Fail(WriteCode(errno), QStringLiteral("cannot write the file: ") + ErrnoText(errno));
        if (vReplace) {
            if (::rename(temporary.constData(), target.constData()) != 0)
                Fail(WriteCode(errno), QStringLiteral("cannot replace %1: %2").arg(vTarget, ErrnoText(errno)));
        } else if (::link(temporary.constData(), target.constData()) != 0) {
            // A link never replaces what is there, so a file that appeared meanwhile survives.
            Fail(errno == EEXIST ? XdwResult::FileExists : WriteCode(errno),
                 QStringLiteral("cannot create %1: %2").arg(vTarget, ErrnoText(errno)));
        } else {
            ::unlink(temporary.constData());
        }
    } catch (...) {
        ::unlink(temporary.constData());
        throw;
    }
    // The rename outlasts a power cut only once the folder is written out too; the file is
    // complete either way, so a failure here is not one of the save.
    const Descriptor directory(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.Get() >= 0)
        (void)::fsync(directory.Get());
}

} // namespace

qint64 EditableFile::EntryCount() const
{
    return (baseContainer ? baseContainer->EntryCount() : 0) + static_cast<qint64>(added.size());
}

QByteArray EditableFile::EntryBody(qint64 vNumber) const
{
    const qint64 inBase = baseContainer ? baseContainer->EntryCount() : 0;
    // The number comes from a reference in the file, so one beyond the table is damage.
    if (vNumber < 0 || vNumber >= EntryCount())
        Refuse(QStringLiteral("reference to entry %1 of %2").arg(vNumber).arg(EntryCount()));
    if (vNumber < inBase)
        return baseContainer->EntryBody(vNumber).toByteArray();
    return added[static_cast<size_t>(vNumber - inBase)];
}

qint64 EditableFile::AddEntry(const QByteArray& vBody)
{
    added.push_back(vBody);
    return EntryCount() - 1;
}

EditableFile LoadEditable(const QByteArray& vBytes)
{
    auto container = std::make_shared<const Container>(vBytes);
    EditableFile file;
    file.generation = container->Generation();
    file.rootKind = container->RootKind();
    file.root = ReadTree(*container);
    if (file.root.kind != file.rootKind)
        Refuse(QStringLiteral("root record does not match the header"));
    file.base = vBytes;
    file.baseContainer = std::move(container);
    return file;
}

EditableFile LoadEditable(const QString& vPath)
{
    const QByteArray path = QFile::encodeName(vPath);
    const Descriptor fd(::open(path.constData(), O_RDONLY | O_CLOEXEC));
    if (fd.Get() < 0)
        Fail(errno == ENOENT || errno == ENOTDIR ? XdwResult::FileNotFound : XdwResult::NoPermission,
             QStringLiteral("cannot open %1: %2").arg(vPath, ErrnoText(errno)));
    struct stat st {};
    if (::fstat(fd.Get(), &st) != 0 || !S_ISREG(st.st_mode) || st.st_size > MaxFileSize)
        Refuse(QStringLiteral("%1 is no file of a readable size").arg(vPath));
    if (::flock(fd.Get(), LOCK_SH | LOCK_NB) != 0)
        Fail(errno == EWOULDBLOCK ? XdwResult::FileInUse : XdwResult::NoPermission,
             QStringLiteral("cannot lock %1").arg(vPath));
    QByteArray bytes(static_cast<qsizetype>(st.st_size), Qt::Uninitialized);
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd.Get(), bytes.data() + done, static_cast<size_t>(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            Refuse(QStringLiteral("%1 ends while it is read").arg(vPath));
        done += n;
    }
    return LoadEditable(bytes);
}

QByteArray SavedBytes(const EditableFile& vFile)
{
    if (!vFile.baseContainer)
        return Header(vFile.generation, vFile.rootKind) + Segment(vFile, 16, 0);
    // What the base's current state took (its properties and trailer) is history from now on.
    const qint64 superseded = vFile.baseContainer->Superseded() + vFile.base.size()
        - vFile.baseContainer->StateStart();
    return vFile.base + Segment(vFile, vFile.base.size(), superseded);
}

void Save(EditableFile& vFile, const QString& vPath)
{
    if (vFile.generation < 1 || vFile.generation > 0xFF || (vFile.rootKind & ~0xFFu) != 0xC000)
        Fail(XdwResult::InvalidArg, QStringLiteral("no file of generation %1, kind %2")
                                        .arg(vFile.generation).arg(vFile.rootKind, 0, 16));
    const QByteArray bytes = SavedBytes(vFile);
    if (bytes.size() > MaxFileSize)
        Fail(XdwResult::DiskFull, QStringLiteral("the file would pass 2 GiB"));
    WriteReplacing(vPath, bytes, vFile.baseContainer != nullptr);
    vFile.baseContainer = std::make_shared<const Container>(bytes);
    vFile.base = bytes;
    vFile.added.clear();
}

} // namespace xdw
