// The buffer size dialog: presets, the aspect constraint, OK and Cancel.
#include "core/document/CanvasSize.h"

#include <fstream>
#include <sstream>

#include "core/framework/AppState.h"
#include "core/framework/Host.h"
#include "core/framework/vb.h"
#include "core/framework/PanelLook.h"

namespace CanvasSize {
Form form("CanvasSize", "Buffer size");
Label Label1(form, "Label1", "Width");
TextBox Text1(form, "Text1", "320");
Label Label2(form, "Label2", "Height");
TextBox Text2(form, "Text2", "240");
CheckBox Check1(form, "Check1", "Constrain proportions", 1);
Label Label3(form, "Label3", "Buffer size presets");
ListBox List1(form, "List1", [] { List1_Click(); });
Label Label4(form, "Label4", "Resample method");
ListBox List2(form, "List2");
CommandButton Command1(form, "Command1", "OK", [] { Command1_Click(); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Command2_Click(); }, ButtonRole::Cancel);

float SavedWidth = 0, SavedHeight = 0;
int16_t SizeCancelled = 0;
int ConstrainFlag = 1;
std::vector<Preset> Presets;

namespace {
struct Wiring {
    Wiring() {
        form.Load = Form_Load;
        Text1.KeyUp = Text1_KeyUp;
        Text2.KeyUp = Text2_KeyUp;
        Check1.Enabled.setQuietly(false);
        List2.Enabled.setQuietly(false);
        List2.items = {"Nearest neighbor", "Bi-linear", "Bi-linear+"};
        List2.ListIndex.setQuietly(0);
        Label1.Group = Text1.Group = 2;
        Label2.Group = Text2.Group = 3;
        Command1.Group = Command2.Group = 4;
    }
} wiring;

// Free-format input of one field: a quoted string or a bare token up to a comma.
bool ReadField(std::istream& in, std::string& out) {
    out.clear();
    char c;
    while (in.get(c) && (c == ' ' || c == '\t' || c == '\r' || c == '\n')) {}
    if (!in) return false;
    if (c == '"') {
        while (in.get(c) && c != '"') out += c;
        while (in.get(c) && c != ',' && c != '\n') {}
        return true;
    }
    out += c;
    while (in.get(c) && c != ',' && c != '\n') out += c;
    while (!out.empty() && (out.back() == ' ' || out.back() == '\r' || out.back() == '\t')) out.pop_back();
    return true;
}

int16_t PresetValue(const std::string& field) {
    double v = vb::Val(field);
    return vb::CInt(v);  // raises on a value that is no 16-bit integer: reading ends there
}
}  // namespace

void ReadPresets(const std::string& path) {
    Presets.clear();
    List1.Clear();
    std::ifstream in(path, std::ios::binary);
    if (!in) return;
    std::string name, w, h;
    try {
        while (Presets.size() < 80 && ReadField(in, name)) {
            if (!ReadField(in, w) || !ReadField(in, h)) break;
            Preset p{PresetValue(w), PresetValue(h)};
            Presets.push_back(p);
            List1.AddItem(name);
        }
    } catch (const std::exception&) {
        // An error ends the reading with what has been read.
    }
}

void Form_Load() {
    PrefsCallBack(form);
    SavedWidth = static_cast<float>(vb::Val(Text1.Text.get()));
    SavedHeight = static_cast<float>(vb::Val(Text2.Text.get()));
    ReadPresets(ProgramFile("Def_Res.txt"));
}

void List1_Click() {
    int i = List1.ListIndex;
    if (i < 0 || i >= static_cast<int>(Presets.size())) return;
    Text1.Text = std::to_string(Presets[static_cast<size_t>(i)].width);
    Text2.Text = std::to_string(Presets[static_cast<size_t>(i)].height);
}

namespace {
bool ConstraintOn() { return Check1.Enabled && Check1.Value == ConstrainFlag; }
}

void Text1_KeyUp() {
    if (!ConstraintOn()) return;
    double w = std::max(vb::Val(Text1.Text.get()), 0.0001);
    double ratio = std::max(SavedWidth / w, 0.0001);
    Text2.Text = vb::Str(vb::Int(SavedHeight / ratio));
}

void Text2_KeyUp() {
    if (!ConstraintOn()) return;
    double h = std::max(vb::Val(Text2.Text.get()), 0.0001);
    double ratio = std::max(SavedHeight / h, 0.0001);
    Text1.Text = vb::Str(vb::Int(SavedWidth / ratio));
}

void Command1_Click() {
    SizeCancelled = 0;
    Hide(form);
    Check1.Enabled = false;
    List2.Enabled = false;
    Unload(form);  // the next showing takes its saved size afresh
}

void Command2_Click() {
    SizeCancelled = 255;
    Text1.Text = vb::Str(SavedWidth);
    Text2.Text = vb::Str(SavedHeight);
    Hide(form);
    Unload(form);
}
}  // namespace CanvasSize
