// Planes across the bus through memfds kept from call to call, or inline for
// small ones.
#include "plugin/PlaneTransfer.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <list>
#include <map>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "plugin/Operations.h"

#ifndef F_SEAL_FUTURE_WRITE
#define F_SEAL_FUTURE_WRITE 0x0010
#endif

namespace Automation {
namespace {
std::string Bounds(int columns, int rows) { return std::to_string(columns) + " by " + std::to_string(rows); }

[[noreturn]] void Refuse(std::string message) { throw Refusal{InvalidArgs, std::move(message)}; }
[[noreturn]] void NoMemory() {
    throw Refusal{"org.freedesktop.DBus.Error.NoMemory", "No memory for a copy of the plane."};
}

// A memfd and the host's mapping of it.
struct MappedFile {
    int fd = -1;
    uint8_t* map = nullptr;
    size_t bytes = 0;
    dev_t device = 0;
    ino_t inode = 0;

    MappedFile() = default;
    MappedFile(MappedFile&& o) noexcept { *this = std::move(o); }
    MappedFile& operator=(MappedFile&& o) noexcept {
        std::swap(fd, o.fd), std::swap(map, o.map), std::swap(bytes, o.bytes);
        device = o.device, inode = o.inode;
        return *this;
    }
    ~MappedFile() {
        if (map) munmap(map, bytes);
        if (fd >= 0) close(fd);
    }
};

// A caller's files: the memfd each plane it got was written into, keyed by
// the plane, and the mappings of the last few memfds it sent planes in, most
// recent first.
struct CallerFiles {
    std::map<const Plane*, MappedFile> given;
    std::list<MappedFile> received;
};
constexpr size_t ReceivedKept = 4;
std::map<QString, CallerFiles> Files;

// A memfd of `bytes` bytes mapped for writing, then sealed so that nobody can
// write it, resize it or map it for writing any more; the mapping made before
// the seal goes on writing. Without that seal (an older kernel) the file cannot
// be handed out twice: fd stays -1 after `bytes` are written by the caller.
MappedFile GivenFile(size_t bytes) {
    MappedFile f;
    f.fd = memfd_create("kelpwick-plane", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (f.fd < 0 || ftruncate(f.fd, static_cast<off_t>(bytes)) != 0) NoMemory();
    void* p = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, f.fd, 0);
    if (p == MAP_FAILED) NoMemory();
    f.map = static_cast<uint8_t*>(p);
    f.bytes = bytes;
    return f;
}

bool SealForReuse(int fd) {
    return fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_FUTURE_WRITE | F_SEAL_SEAL) == 0;
}

QVariant Variant(int columns, int rows, int fd) {
    QDBusUnixFileDescriptor descriptor(fd);  // keeps a duplicate
    QDBusArgument arg;
    arg.beginStructure();
    arg << columns << rows << descriptor;
    arg.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(arg)));
}

// Reads exactly `bytes` bytes from the start of the descriptor.
bool ReadWhole(int fd, uint8_t* into, size_t bytes) {
    size_t done = 0;
    while (done < bytes) {
        ssize_t n = pread(fd, into + done, bytes - done, static_cast<off_t>(done));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

// The caller's mapping of a memfd that cannot shrink, so that reading it never
// runs past its end; nullptr for any other descriptor, which is read instead.
const uint8_t* ReceivedMapping(const QString& caller, int fd, const struct stat& st, size_t bytes) {
    const int seals = fcntl(fd, F_GET_SEALS);
    if (seals < 0 || !(seals & F_SEAL_SHRINK)) return nullptr;
    std::list<MappedFile>& kept = Files[caller].received;
    for (auto it = kept.begin(); it != kept.end(); ++it) {
        if (it->device == st.st_dev && it->inode == st.st_ino && it->bytes >= bytes) {
            kept.splice(kept.begin(), kept, it);
            return kept.front().map;
        }
    }
    void* p = mmap(nullptr, bytes, PROT_READ, MAP_SHARED | MAP_POPULATE, fd, 0);
    if (p == MAP_FAILED) return nullptr;
    MappedFile f;
    f.map = static_cast<uint8_t*>(p);
    f.bytes = bytes;
    f.device = st.st_dev;
    f.inode = st.st_ino;
    kept.push_front(std::move(f));
    if (kept.size() > ReceivedKept) kept.pop_back();
    return kept.front().map;
}

// The spare when it has the bounds wanted, else new memory that every byte will be written to.
Plane Destination(Plane& spare, int columns, int rows) {
    if (!spare.empty() && !spare.isView() && spare.ubX() == columns - 1 && spare.ubY() == rows - 1)
        return std::move(spare);
    return Plane::Make(columns - 1, rows - 1, false);
}

Plane FromDescriptor(const QDBusUnixFileDescriptor& fd, int columns, int rows, const char* what, const QString& caller,
                     Plane& spare) {
    const size_t bytes = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    struct stat st {};
    if (!fd.isValid() || fstat(fd.fileDescriptor(), &st) != 0)
        Refuse(std::string(what) + ": the file descriptor cannot be read.");
    if (static_cast<uint64_t>(st.st_size) < bytes)
        Refuse(std::string(what) + ": the file descriptor holds " + std::to_string(st.st_size) + " bytes, " +
               std::to_string(bytes) + " are needed.");
    Plane p = Destination(spare, columns, rows);
    if (const uint8_t* mapped = ReceivedMapping(caller, fd.fileDescriptor(), st, bytes))
        std::memcpy(p.data(), mapped, bytes);
    else if (!ReadWhole(fd.fileDescriptor(), p.data(), bytes))
        Refuse(std::string(what) + ": the file descriptor could not be read to its end.");
    return p;
}

Plane FromBytes(const QByteArray& bytes, int columns, int rows, const char* what, Plane& spare) {
    const size_t need = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    if (static_cast<size_t>(bytes.size()) != need)
        Refuse(std::string(what) + ": " + std::to_string(bytes.size()) + " bytes were given for " +
               Bounds(columns, rows) + ", which takes " + std::to_string(need) + ".");
    Plane p = Destination(spare, columns, rows);
    std::memcpy(p.data(), bytes.constData(), need);
    return p;
}
}  // namespace

QVariant PlaneVariant(const Plane& plane, const QString& caller) {
    const int columns = plane.ubX() + 1, rows = plane.ubY() + 1;
    const size_t bytes = plane.count();
    MappedFile& f = Files[caller].given[&plane];
    if (f.fd < 0 || f.bytes != bytes) {
        f = GivenFile(bytes);
        if (!SealForReuse(f.fd)) {
            // Handed out once: written, unmapped and sealed against every write.
            std::memcpy(f.map, plane.data(), bytes);
            MappedFile once = std::move(f);
            Files[caller].given.erase(&plane);
            munmap(once.map, once.bytes);
            once.map = nullptr;
            fcntl(once.fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL);
            return Variant(columns, rows, once.fd);
        }
    }
    std::memcpy(f.map, plane.data(), bytes);
    return Variant(columns, rows, f.fd);
}

Plane PlaneFromVariant(const QVariant& value, int columns, int rows, const char* what, const QString& caller,
                       Plane spare) {
    const QVariant inner = value.value<QDBusVariant>().variant();
    if (!inner.canConvert<QDBusArgument>())
        Refuse(std::string(what) + ": a plane is a variant holding (iih) or (iiay).");
    const QDBusArgument arg = inner.value<QDBusArgument>();
    const QString signature = arg.currentSignature();
    if (signature != "(iih)" && signature != "(iiay)")
        Refuse(std::string(what) + ": a plane is a variant holding (iih) or (iiay), not " + signature.toStdString() +
               ".");
    // The whole structure is read before anything is judged, so that a refusal
    // leaves no reader half way through it.
    int c = 0, r = 0;
    QDBusUnixFileDescriptor fd;
    QByteArray bytes;
    arg.beginStructure();
    arg >> c >> r;
    if (signature == "(iih)") arg >> fd;
    else arg >> bytes;
    arg.endStructure();
    if (c != columns || r != rows) {
        Refuse(std::string(what) + " given is " + Bounds(c, r) + "; it must be " + Bounds(columns, rows) +
               " (columns by rows, the bounds of the plane it replaces).");
    }
    return signature == "(iih)" ? FromDescriptor(fd, columns, rows, what, caller, spare)
                                : FromBytes(bytes, columns, rows, what, spare);
}

bool HoldsPlaneMemory(const QString& caller) { return Files.count(caller) != 0; }

void ForgetPlaneMemory(const QString& caller) { Files.erase(caller); }

size_t PlaneMemoryHeld() {
    size_t bytes = 0;
    for (const auto& [caller, files] : Files) {
        for (const auto& [plane, f] : files.given) bytes += f.bytes;
        for (const MappedFile& f : files.received) bytes += f.bytes;
    }
    return bytes;
}

}  // namespace Automation
