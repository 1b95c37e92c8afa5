// Serving the operation table on the session bus. Each call's arguments are
// checked against the table's signature before its handler runs; a refused call
// gets an error that says why, and changes nothing. Replies are sent once the
// handler returns, so a box that waits for the user answers late while other
// calls go on being delivered meanwhile.
#include "plugin/AutomationService.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <cstdio>
#include <memory>
#include <unistd.h>

#include "plugin/Calls.h"
#include "plugin/PlaneTransfer.h"
#include "plugin/PluginOptions.h"

namespace Automation {
namespace {
constexpr const char* PropertiesInterface = "org.freedesktop.DBus.Properties";

QDBusMessage ServeProperty(const QDBusMessage& m) {
    const QList<QVariant> a = m.arguments();
    Call none;
    if (m.member() == "GetAll" && a.size() == 1) {
        QVariantMap all;
        for (const Operation& op : Operations())
            if (op.property) all.insert(QString::fromStdString(op.name), op.run(none));
        return m.createReply(QVariant::fromValue(all));
    }
    if (m.member() == "Get" && a.size() == 2) {
        const Operation* op = FindOperation(a[1].toString().toStdString());
        if (op && op->property) return m.createReply(QVariant::fromValue(QDBusVariant(op->run(none))));
        return m.createErrorReply("org.freedesktop.DBus.Error.UnknownProperty",
                                  "There is no property " + a[1].toString() + ".");
    }
    return m.createErrorReply("org.freedesktop.DBus.Error.PropertyReadOnly",
                              "The properties of this interface can be read, not written.");
}

QDBusMessage Serve(const Operation& op, const QDBusMessage& m) {
    const std::string expected = InSignature(op);
    if (m.signature().toStdString() != expected)
        return m.createErrorReply(InvalidArgs, QString::fromStdString(op.name + " takes (" + expected +
                                                                      "), not (" + m.signature().toStdString() + ")."));
    Call call{m.arguments(), m.service()};
    const QList<QVariant> given = m.arguments();  // what by-reference arguments send back
    try {
        const QVariant result = op.run(call);
        QList<QVariant> out;
        if (!op.result.empty()) out.push_back(result);
        for (size_t i = 0; i < op.args.size(); ++i)
            if (op.args[i].byReference) out.push_back(given[static_cast<qsizetype>(i)]);
        return m.createReply(out);
    } catch (const Refusal& r) {
        return m.createErrorReply(r.error, QString::fromStdString(op.name + ": " + r.message));
    } catch (const std::bad_alloc&) {
        return m.createErrorReply("org.freedesktop.DBus.Error.NoMemory",
                                  QString::fromStdString(op.name + ": not enough memory; nothing has changed."));
    } catch (const std::exception& e) {
        return m.createErrorReply("org.freedesktop.DBus.Error.Failed",
                                  QString::fromStdString(op.name + ": " + e.what()));
    }
}

class KelpwickObject : public QDBusVirtualObject {
public:
    explicit KelpwickObject(const QDBusConnection& bus)
        : watcher_(QString(), bus, QDBusServiceWatcher::WatchForUnregistration) {
        // A caller that leaves the bus (it ended, or was killed) gives back its
        // locks and the memory its planes went through.
        QObject::connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, &watcher_,
                         [this](const QString& name) { Forget(name); });
    }
    QString introspect(const QString&) const override { return QString::fromStdString(InterfaceXml()); }
    bool handleMessage(const QDBusMessage& m, const QDBusConnection& bus) override {
        if (m.type() != QDBusMessage::MethodCallMessage) return false;
        if (m.interface() == PropertiesInterface) {
            bus.send(ServeProperty(m));
            return true;
        }
        if (!m.interface().isEmpty() && m.interface() != Interface) return false;
        const Operation* op = FindOperation(m.member().toStdString());
        if (!op || op->property) return false;
        const QDBusMessage reply = Serve(*op, m);
        const QString caller = m.service();
        if (op->name == "Kel_Lock" && reply.type() == QDBusMessage::ReplyMessage)
            CallerProcess(caller.toStdString(), static_cast<long>(bus.interface()->servicePid(caller).value()));
        bus.send(reply);
        if (LocksHeldBy(caller.toStdString()) > 0 || HoldsPlaneMemory(caller)) Watch(caller);
        return true;
    }

private:
    void Watch(const QString& caller) {
        if (watcher_.watchedServices().contains(caller)) return;
        watcher_.addWatchedService(caller);
        // It may have gone already, before the watch began.
        if (!watcher_.connection().interface()->isServiceRegistered(caller)) Forget(caller);
    }
    void Forget(const QString& caller) {
        CallerGone(caller.toStdString());
        ForgetPlaneMemory(caller);
        watcher_.removeWatchedService(caller);
    }
    QDBusServiceWatcher watcher_;
};

std::unique_ptr<KelpwickObject> Object;
QString Name;
}  // namespace

std::string StartAutomation() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        SetBusStatus("No session bus: plug-ins cannot reach this Kelpwick.");
        return "";
    }
    Object = std::make_unique<KelpwickObject>(bus);
    bus.registerVirtualObject(ObjectPath, Object.get(), QDBusConnection::SingleNode);
    Name = BusName;
    std::string status = std::string("Plug-ins reach this Kelpwick as ") + BusName + ".";
    if (!bus.registerService(Name)) {
        Name = QString(BusName) + ".instance" + QString::number(getpid());
        bus.registerService(Name);
        status = std::string("Another Kelpwick holds ") + BusName + "; plug-ins reach this one as " +
                 Name.toStdString() + ".";
        std::fprintf(stderr, "kelpwick: %s\n", status.c_str());
    }
    qputenv("KELPWICK_BUS_NAME", Name.toUtf8());
    SetBusStatus(status);
    return Name.toStdString();
}

void StopAutomation() {
    if (!Object) return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterService(Name);
    bus.unregisterObject(ObjectPath);
    Object.reset();
}

}  // namespace Automation
