// Planes across the bus. A plane leaves the host as a variant holding (iih):
// its columns, its rows and a sealed memfd with columns * rows bytes, column
// fastest. It comes in as the same (iih) or, for small planes, as (iiay) with
// the bytes in the message itself. Either way the bytes are read into a new
// plane, so the one in use is replaced only once the whole of it has arrived.
#pragma once

#include <QVariant>
#include <cstddef>

#include "core/framework/Plane.h"

namespace Automation {

// A sealed memfd holding `bytes` bytes; -1 when the system refuses one.
int SealedMemfd(const uint8_t* data, size_t bytes);
// The plane as the variant a get operation returns.
QVariant PlaneVariant(const Plane& plane);
// The plane a set operation was given, which must be columns by rows.
// `what` names the plane in the refusal. Throws Refusal. A spare plane of the
// same bounds is filled rather than new memory, which would be faulted in page
// by page.
Plane PlaneFromVariant(const QVariant& value, int columns, int rows, const char* what, Plane spare = {});

}  // namespace Automation
