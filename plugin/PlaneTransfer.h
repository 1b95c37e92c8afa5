// Planes across the bus. A plane leaves the host as a variant holding (iih):
// its columns, its rows and a memfd with columns * rows bytes, column fastest.
// It comes in as the same (iih) or, for small planes, as (iiay) with the bytes
// in the message itself. Either way the bytes are read into a new plane, so the
// one in use is replaced only once the whole of it has arrived.
//
// Mapping 12 MB costs more than copying it, so both sides keep their memfds
// mapped from call to call: a caller's get of a plane is written into the memfd
// its previous get of that plane was given (sealed so that only the host's own
// mapping writes it), and a caller's memfd that is sealed against shrinking is
// mapped once and read from that mapping at every set. What a caller holds is
// let go when it leaves the bus.
#pragma once

#include <QString>
#include <QVariant>
#include <cstddef>

#include "core/framework/Plane.h"

namespace Automation {

// The plane as the variant a get operation returns to `caller`.
QVariant PlaneVariant(const Plane& plane, const QString& caller);
// The plane a set operation was given, which must be columns by rows.
// `what` names the plane in the refusal. Throws Refusal. A spare plane of the
// same bounds is filled rather than new memory, which would be faulted in page
// by page.
Plane PlaneFromVariant(const QVariant& value, int columns, int rows, const char* what, const QString& caller,
                       Plane spare = {});
// The memfds and mappings kept for a caller, and letting them go.
bool HoldsPlaneMemory(const QString& caller);
void ForgetPlaneMemory(const QString& caller);
// The bytes of the memfds kept for the callers on the bus.
size_t PlaneMemoryHeld();

}  // namespace Automation
