// Operations that ask the user, show progress, count the lock, or reach for
// the caller's own windows. The boxes reply when the user has answered.
#include <cmath>

#include "core/display/Form1.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "plugin/Calls.h"
#include "plugin/PluginOptions.h"

namespace Automation {
namespace {
std::string MessageText(const Call& c) {
    const QVariant v = ArgVariant(c, 0);
    switch (v.metaType().id()) {
    case QMetaType::QString: case QMetaType::Int: case QMetaType::UInt: case QMetaType::Short:
    case QMetaType::UShort: case QMetaType::LongLong: case QMetaType::ULongLong: case QMetaType::UChar:
    case QMetaType::Double: case QMetaType::Bool:
        return v.toString().toStdString();
    default:
        Refuse("message must be a variant holding a string or a number.");
    }
}

// The file requester of the panel; "" when cancelled. The canvas stays locked
// while the events that piled up behind the dialog run.
std::string RequestFile(const Call& c, bool save) {
    FileDialogRequest dialog;
    dialog.Title = ArgString(c, 0);
    dialog.FileName = ArgString(c, 1);
    dialog.Filter = ArgString(c, 2);
    dialog.InitDir = App.StartDirectory;
    const std::optional<std::string> chosen = save ? host().SaveFileDialog(dialog) : host().OpenFileDialog(dialog);
    ++App.LockCount;
    host().DoEvents();
    --App.LockCount;
    return chosen.value_or("");
}

uint64_t WindowId(const Call& c) { return c.args[0].value<qulonglong>(); }

[[noreturn]] void NoSuchWindow(uint64_t window) {
    throw Refusal{NotSupported, "Kelpwick cannot reach the window " + std::to_string(window) +
                                    ": it is not a window of the X display Kelpwick runs on, or Kelpwick does not "
                                    "run on X11."};
}
}  // namespace

QVariant Kel_ValueBox(Call& c) {
    const int min = ArgInt16(c, 1), max = ArgInt16(c, 2);
    if (min < 0 || max > 255 || min > max)
        Refuse("The value box takes limits with 0 <= Min <= max <= 255; Min is " + std::to_string(min) +
               " and max " + std::to_string(max) + ".");
    GenericOptions::form.Caption = "Kelpwick";
    return static_cast<short>(GetGenericValue(ArgString(c, 0), min, max, min));
}

QVariant Kel_QuestionBox(Call& c) { return Kelpwick_QuestionBox(MessageText(c)); }

QVariant Kel_MessageBox(Call& c) {
    Kelpwick_MsgBox(MessageText(c));
    return {};
}

QVariant Kel_RequestFile_Save(Call& c) { return QString::fromStdString(RequestFile(c, true)); }
QVariant Kel_RequestFile_Open(Call& c) { return QString::fromStdString(RequestFile(c, false)); }

QVariant Kel_SetProgress(Call& c) {
    const double progress = c.args[0].toDouble();
    if (!(progress >= 0 && progress <= 100))
        Refuse("progress is " + std::to_string(progress) + "; it lies between 0 and 100.");
    SetPluginProgress(static_cast<float>(progress));
    return {};
}

QVariant Kel_Lock(Call& c) {
    TakeLock(c.sender.toStdString());
    return {};
}

QVariant Kel_Unlock(Call& c) {
    ReleaseLock(c.sender.toStdString());
    return {};
}

// The canvas's tile texture as the window's background.
QVariant Kel_TileTextureMe(Call& c) {
    if (!host().PaintTileOnWindow(WindowId(c), Draw_Pattern(Form1::form))) NoSuchWindow(WindowId(c));
    return {};
}

QVariant Kel_SendFormObject(Call& c) {
    if (!host().RaiseWindowOnTop(WindowId(c), ArgInt16(c, 1))) NoSuchWindow(WindowId(c));
    return {};
}

}  // namespace Automation
