// The C++ client of the automation interface.
#include "plugins/KelpwickClient.h"

#include <QDBusArgument>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace kelpwick {
namespace {
constexpr const char* Path = "/org/kelpwick/Kelpwick";
constexpr const char* Interface = "org.kelpwick.Kelpwick._Kelpwick_Class";

// Writes the whole of `data` at the start of the descriptor.
bool WriteWhole(int fd, const uint8_t* data, size_t bytes) {
    size_t done = 0;
    while (done < bytes) {
        ssize_t n = pwrite(fd, data + done, bytes - done, static_cast<off_t>(done));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        done += static_cast<size_t>(n);
    }
    return true;
}

QVariant PlaneArgument(int columns, int rows, const QVariant& payload) {
    QDBusArgument arg;
    arg.beginStructure();
    arg << columns << rows;
    if (payload.metaType().id() == QMetaType::QByteArray) arg << payload.toByteArray();
    else arg << payload.value<QDBusUnixFileDescriptor>();
    arg.endStructure();
    return QVariant::fromValue(QDBusVariant(QVariant::fromValue(arg)));
}
}  // namespace

Error::Error(const QString& n, const QString& message)
    : std::runtime_error((n + ": " + message).toStdString()), name(n) {}

MappedPlane::MappedPlane(int columns, int rows, int fd) : columns_(columns), rows_(rows) {
    if (size() == 0) return;
    // Populated at once: one call rather than a fault per page.
    void* p = mmap(nullptr, size(), PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
    if (p == MAP_FAILED) throw Error("org.kelpwick.Client.NoMap", "the plane's memfd could not be mapped");
    data_ = static_cast<uint8_t*>(p);
}

MappedPlane::MappedPlane(MappedPlane&& o) noexcept { *this = std::move(o); }

MappedPlane& MappedPlane::operator=(MappedPlane&& o) noexcept {
    if (data_) munmap(data_, size());
    columns_ = std::exchange(o.columns_, 0);
    rows_ = std::exchange(o.rows_, 0);
    data_ = std::exchange(o.data_, nullptr);
    return *this;
}

MappedPlane::~MappedPlane() {
    if (data_) munmap(data_, size());
}

Client::Client(QString busName) : bus_(QDBusConnection::sessionBus()), busName_(std::move(busName)) {}

Client::~Client() {
    if (outgoing_ >= 0) close(outgoing_);
}

QString Client::DefaultBusName() {
    const QByteArray fromHost = qgetenv("KELPWICK_BUS_NAME");
    return fromHost.isEmpty() ? QString("org.kelpwick.Kelpwick") : QString::fromUtf8(fromHost);
}

bool Client::connected() const { return bus_.isConnected(); }

QList<QVariant> Client::call(const char* operation, const QList<QVariant>& args, int timeoutMs) {
    QDBusMessage m = QDBusMessage::createMethodCall(busName_, Path, Interface, operation);
    m.setArguments(args);
    const QDBusMessage reply = bus_.call(m, QDBus::Block, timeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) throw Error(reply.errorName(), reply.errorMessage());
    return reply.arguments();
}

int64_t Client::number(const char* operation, const QList<QVariant>& args) {
    const QList<QVariant> out = call(operation, args);
    if (out.isEmpty()) throw Error("org.kelpwick.Client.NoResult", QString(operation) + " gave no result");
    return out.front().toLongLong();
}

MappedPlane Client::getPlane(const char* operation) {
    const QVariant v = call(operation).front().value<QDBusVariant>().variant();
    if (!v.canConvert<QDBusArgument>()) return {};  // the integer -1
    const QDBusArgument arg = v.value<QDBusArgument>();
    int columns = 0, rows = 0;
    QDBusUnixFileDescriptor fd;
    arg.beginStructure();
    arg >> columns >> rows >> fd;
    arg.endStructure();
    return MappedPlane(columns, rows, fd.fileDescriptor());
}

// The host has read the whole memfd by the time it replies, so one memfd serves
// every set: its pages, once there, are written over rather than faulted in anew.
void Client::setPlane(const char* operation, int columns, int rows, const uint8_t* data) {
    const size_t bytes = static_cast<size_t>(columns) * static_cast<size_t>(rows);
    if (outgoing_ < 0) outgoing_ = memfd_create("kelpwick-plane", MFD_CLOEXEC);
    if (outgoing_ < 0) throw Error("org.kelpwick.Client.NoMemfd", "memfd_create failed");
    if (outgoingBytes_ != bytes && ftruncate(outgoing_, static_cast<off_t>(bytes)) != 0)
        throw Error("org.kelpwick.Client.NoMemfd", "the memfd could not be sized for the plane");
    outgoingBytes_ = bytes;
    if (!WriteWhole(outgoing_, data, bytes))
        throw Error("org.kelpwick.Client.NoMemfd", "the plane could not be written to a memfd");
    call(operation, {PlaneArgument(columns, rows, QVariant::fromValue(QDBusUnixFileDescriptor(outgoing_)))});
}

void Client::setPlaneInline(const char* operation, int columns, int rows, const uint8_t* data) {
    const QByteArray bytes(reinterpret_cast<const char*>(data),
                           static_cast<qsizetype>(columns) * static_cast<qsizetype>(rows));
    call(operation, {PlaneArgument(columns, rows, bytes)});
}

int Client::property(const char* name) {
    QDBusMessage m = QDBusMessage::createMethodCall(busName_, Path, "org.freedesktop.DBus.Properties", "Get");
    m.setArguments({QString(Interface), QString(name)});
    const QDBusMessage reply = bus_.call(m);
    if (reply.type() == QDBusMessage::ErrorMessage) throw Error(reply.errorName(), reply.errorMessage());
    return reply.arguments().front().value<QDBusVariant>().variant().toInt();
}

int Client::bufferWidth() { return property("Kel_BufferWidth"); }
int Client::bufferHeight() { return property("Kel_BufferHeight"); }

}  // namespace kelpwick
