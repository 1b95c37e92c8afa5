// The operations of the automation class as one table: name, arguments, result,
// doc string and member id. The introspection data and the dispatch of bus calls
// are both made from it, so that the order and the names cannot drift apart.
#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <string>
#include <vector>

namespace Automation {

inline constexpr const char* BusName = "org.kelpwick.Kelpwick";
inline constexpr const char* ObjectPath = "/org/kelpwick/Kelpwick";
inline constexpr const char* Interface = "org.kelpwick.Kelpwick._Kelpwick_Class";
// Error names of refused calls; the message says what was wrong.
inline constexpr const char* InvalidArgs = "org.freedesktop.DBus.Error.InvalidArgs";
inline constexpr const char* NoCustomBrush = "org.kelpwick.Kelpwick.Error.NoCustomBrush";
inline constexpr const char* NotSupported = "org.kelpwick.Kelpwick.Error.NotSupported";

struct Argument {
    std::string name;
    std::string type;  // D-Bus signature of one complete type
    bool byReference;  // comes back as an out argument after the result
};

// A refused call: nothing has changed.
struct Refusal {
    const char* error;
    std::string message;
};

// One call being served: the arguments as they came, in table order. By-reference
// arguments are sent back from here, so a handler that changes one writes it back.
struct Call {
    QList<QVariant> args;
    QString sender;  // the caller's unique bus name
};

using Handler = QVariant (*)(Call& call);

struct Operation {
    std::string name;
    std::vector<Argument> args;
    std::string result;  // D-Bus signature, "" when there is none
    std::string doc;     // "" when the operation has none
    uint32_t memberId;
    bool property;       // a read-only property rather than a method
    Handler run;
};

// The 72 operations in the order of the class.
const std::vector<Operation>& Operations();
const Operation* FindOperation(const std::string& name);
// The D-Bus signature of the arguments a caller sends.
std::string InSignature(const Operation& op);
// The interface's introspection XML (one <interface> element).
std::string InterfaceXml();

}  // namespace Automation
