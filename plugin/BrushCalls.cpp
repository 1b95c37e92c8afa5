// Operations on the custom brush.
#include "brush/CustomBrush.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "plugin/Calls.h"
#include "plugin/PlaneTransfer.h"

namespace Automation {
namespace {
// The brush tool is enabled while a brush exists and its thumbnail shows.
bool BrushToolEnabled() { return BrushExists() && Form2::Picture58.Visible; }

QVariant Get(const Plane& p, const Call& call) {
    if (!BrushToolEnabled()) return Variant(-1);
    return PlaneVariant(p, call.sender);
}

QVariant Set(Call& call, Plane& target, const char* what) {
    if (!BrushExists()) throw Refusal{NoCustomBrush, "There is no custom brush to set a plane of."};
    Plane incoming = PlaneFromVariant(call.args[0], target.ubX() + 1, target.ubY() + 1, what, call.sender);
    target.swap(incoming);
    BrushChanged();
    return {};
}

// A whole number of pixels from the variant a caller gave for a brush side.
int Side(const QVariant& v, const char* name) {
    bool ok = false;
    const qlonglong n = v.toLongLong(&ok);
    if (!ok) Refuse(std::string(name) + " must be a number.");
    if (n < 1 || n > 32767) Refuse(std::string(name) + " of " + std::to_string(n) + " lies outside 1..32767.");
    return static_cast<int>(n);
}
}  // namespace

QVariant Kel_ActivateCustomBrush(Call&) {
    if (!BrushExists()) throw Refusal{NoCustomBrush, "There is no custom brush to activate."};
    Form2::Picture58.Visible = true;
    App.CustomBrushOn = -1;
    Form2::Option1.Value = true;
    Form2::slider1.Value = 16;
    BrushChanged();
    return {};
}

QVariant Kel_CreateEmptyBrush(Call& c) {
    int w = Side(ArgVariant(c, 0), "BrushWidth"), h = Side(ArgVariant(c, 1), "BrushHeight");
    const int16_t result = CreateEmptyBrush(w, h);
    if (result == 0) BrushChanged();
    return Variant(static_cast<short>(result));
}

QVariant Kel_GetBrushWidth(Call&) { return static_cast<short>(BrushWidth); }
QVariant Kel_GetBrushHeight(Call&) { return static_cast<short>(BrushHeight); }
QVariant Kel_GetBrushRBuffer(Call& c) { return Get(BrushR, c); }
QVariant Kel_GetBrushGBuffer(Call& c) { return Get(BrushG, c); }
QVariant Kel_GetBrushBBuffer(Call& c) { return Get(BrushB, c); }
QVariant Kel_GetBrushABuffer(Call& c) { return Get(BrushA, c); }
QVariant Kel_SetBrushRBuffer(Call& c) { return Set(c, BrushR, "The brush's red plane"); }
QVariant Kel_SetBrushGBuffer(Call& c) { return Set(c, BrushG, "The brush's green plane"); }
QVariant Kel_SetBrushBBuffer(Call& c) { return Set(c, BrushB, "The brush's blue plane"); }
QVariant Kel_SetBrushABuffer(Call& c) { return Set(c, BrushA, "The brush's alpha plane"); }

QVariant Kel_NewBrushFilename(Call& c) {
    SetBrushFileName(ArgString(c, 0));
    return {};
}

}  // namespace Automation
