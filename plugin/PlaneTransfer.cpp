// Planes across the bus through sealed memfds, or inline for small ones.
#include "plugin/PlaneTransfer.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "plugin/Operations.h"

namespace Automation {
namespace {
std::string Bounds(int columns, int rows) { return std::to_string(columns) + " by " + std::to_string(rows); }

[[noreturn]] void Refuse(std::string message) { throw Refusal{InvalidArgs, std::move(message)}; }

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

// The spare when it has the bounds wanted, else new memory that every byte will be written to.
Plane Destination(Plane& spare, int columns, int rows) {
    if (!spare.empty() && !spare.isView() && spare.ubX() == columns - 1 && spare.ubY() == rows - 1)
        return std::move(spare);
    return Plane::Make(columns - 1, rows - 1, false);
}

Plane FromDescriptor(const QDBusUnixFileDescriptor& fd, int columns, int rows, const char* what, Plane& spare) {
    const size_t bytes = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    struct stat st {};
    if (!fd.isValid() || fstat(fd.fileDescriptor(), &st) != 0)
        Refuse(std::string(what) + ": the file descriptor cannot be read.");
    if (static_cast<uint64_t>(st.st_size) < bytes)
        Refuse(std::string(what) + ": the file descriptor holds " + std::to_string(st.st_size) + " bytes, " +
               std::to_string(bytes) + " are needed.");
    Plane p = Destination(spare, columns, rows);
    if (!ReadWhole(fd.fileDescriptor(), p.data(), bytes))
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

int SealedMemfd(const uint8_t* data, size_t bytes) {
    int fd = memfd_create("kelpwick-plane", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (fd < 0) return -1;
    size_t done = 0;
    while (done < bytes) {
        ssize_t n = write(fd, data + done, bytes - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            close(fd);
            return -1;
        }
        done += static_cast<size_t>(n);
    }
    // Sealed, the receiver may map it without fearing that it shrinks or changes.
    fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE | F_SEAL_SEAL);
    return fd;
}

QVariant PlaneVariant(const Plane& plane) {
    const int columns = plane.ubX() + 1, rows = plane.ubY() + 1;
    int fd = SealedMemfd(plane.data(), plane.count());
    if (fd < 0) throw Refusal{"org.freedesktop.DBus.Error.NoMemory", "No memory for a copy of the plane."};
    QDBusUnixFileDescriptor descriptor(fd);  // keeps a duplicate
    close(fd);
    QDBusArgument arg;
    arg.beginStructure();
    arg << columns << rows << descriptor;
    arg.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(arg)));
}

Plane PlaneFromVariant(const QVariant& value, int columns, int rows, const char* what, Plane spare) {
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
    Plane p = signature == "(iih)" ? FromDescriptor(fd, columns, rows, what, spare)
                                        : FromBytes(bytes, columns, rows, what, spare);
    return p;
}

}  // namespace Automation
