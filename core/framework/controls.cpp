// Behaviour of the control models: events on property changes, option groups,
// list contents and the drawing primitives of picture boxes.
#include "core/framework/controls.h"

#include <algorithm>
#include <filesystem>
#include <fnmatch.h>

std::vector<Form*>& AllForms() {
    static std::vector<Form*> forms;
    return forms;
}

Form* FindForm(const std::string& name) {
    for (Form* f : AllForms())
        if (f->Name == name) return f;
    return nullptr;
}

Form::Form(std::string name, std::string caption) : Name(std::move(name)) {
    Caption.setQuietly(std::move(caption));
    AllForms().push_back(this);
}

Control* Form::find(const std::string& name) const {
    for (Control* c : controls)
        if (c->Name == name) return c;
    return nullptr;
}

CommandButton* Form::button(ButtonRole role) const {
    for (Control* c : controls)
        if (c->Kind == ControlKind::CommandButton && static_cast<CommandButton*>(c)->Role == role)
            return static_cast<CommandButton*>(c);
    return nullptr;
}

Control::Control(Form& f, std::string name, ControlKind kind) : form(f), Name(std::move(name)), Kind(kind) {
    f.controls.push_back(this);
}

void Control::propertyChanged(const void* prop) {
    onChanged(prop);
    notifyView();
}

Label::Label(Form& f, std::string name, std::string caption) : Control(f, std::move(name), ControlKind::Label) {
    Caption.setQuietly(std::move(caption));
}

CommandButton::CommandButton(Form& f, std::string name, std::string caption, std::function<void()> click,
                             ButtonRole role)
    : Control(f, std::move(name), ControlKind::CommandButton), Click(std::move(click)), Role(role) {
    Caption.setQuietly(std::move(caption));
}

Slider::Slider(Form& f, std::string name, int min, int max, int value, std::function<void()> change)
    : Control(f, std::move(name), ControlKind::Slider), Change(std::move(change)) {
    Min.setQuietly(min);
    Max.setQuietly(max);
    Value.setQuietly(std::clamp(value, std::min(min, max), std::max(min, max)));
}

void Slider::onChanged(const void* prop) {
    int lo = std::min<int>(Min, Max), hi = std::max<int>(Min, Max);
    if (prop == &Value) {
        if (Value < lo || Value > hi) {
            Value = std::clamp<int>(Value, lo, hi);  // re-enters and fires once for the clamped value
            return;
        }
        if (Change) Change();
    } else if (prop == &Min || prop == &Max) {
        if (Value < lo || Value > hi) Value = std::clamp<int>(Value, lo, hi);
    }
}

void Slider::scrollTo(int v) {
    int lo = std::min<int>(Min, Max), hi = std::max<int>(Min, Max);
    v = std::clamp(v, lo, hi);
    if (v == Value) return;
    Value.setQuietly(v);
    if (Scroll) Scroll();
    notifyView();
    if (Change) Change();
}

CheckBox::CheckBox(Form& f, std::string name, std::string caption, int value, std::function<void()> click)
    : Control(f, std::move(name), ControlKind::CheckBox), Click(std::move(click)) {
    Caption.setQuietly(std::move(caption));
    Value.setQuietly(value);
}

void CheckBox::onChanged(const void* prop) {
    if (prop == &Value && Click) Click();
}

OptionButton::OptionButton(Form& f, std::string name, std::string caption, int group, bool value,
                           std::function<void()> click)
    : Control(f, std::move(name), ControlKind::OptionButton), OptionGroup(group), Click(std::move(click)) {
    Caption.setQuietly(std::move(caption));
    Value.setQuietly(value);
}

void OptionButton::onChanged(const void* prop) {
    if (prop != &Value || !Value) return;
    for (Control* c : form.controls) {
        if (c == this || c->Kind != ControlKind::OptionButton) continue;
        auto* o = static_cast<OptionButton*>(c);
        if (o->OptionGroup == OptionGroup && o->Value) o->Value = false;
    }
    if (Click) Click();
}

TextBox::TextBox(Form& f, std::string name, std::string text, std::function<void()> change)
    : Control(f, std::move(name), ControlKind::TextBox), Change(std::move(change)) {
    Text.setQuietly(std::move(text));
}

void TextBox::onChanged(const void* prop) {
    if (prop == &Text && Change) Change();
}

ListBox::ListBox(Form& f, std::string name, std::function<void()> click, ControlKind kind)
    : Control(f, std::move(name), kind), Click(std::move(click)) {}

void ListBox::AddItem(std::string s) {
    items.push_back(std::move(s));
    ListRevision = ListRevision + 1;
}

void ListBox::Clear() {
    items.clear();
    ListIndex.setQuietly(-1);
    ListRevision = ListRevision + 1;
}

std::string ListBox::Text() const {
    int i = ListIndex;
    return (i >= 0 && i < ListCount()) ? items[static_cast<size_t>(i)] : std::string();
}

void ListBox::onChanged(const void* prop) {
    if (prop != &ListIndex) return;
    if (ListIndex < -1 || ListIndex >= ListCount()) {
        ListIndex = -1;
        return;
    }
    if (Click) Click();
}

ComboBox::ComboBox(Form& f, std::string name, std::function<void()> click)
    : ListBox(f, std::move(name), std::move(click), ControlKind::ComboBox) {}

FileListBox::FileListBox(Form& f, std::string name, std::string pattern, std::function<void()> click)
    : ListBox(f, std::move(name), std::move(click), ControlKind::FileListBox), Pattern(std::move(pattern)) {}

void FileListBox::Refresh() {
    std::vector<std::string> found;
    std::error_code ec;
    for (const auto& e : std::filesystem::directory_iterator(Path.empty() ? "." : Path, ec)) {
        if (!e.is_regular_file(ec)) continue;
        std::string n = e.path().filename().string();
        if (fnmatch(Pattern.c_str(), n.c_str(), FNM_CASEFOLD) == 0) found.push_back(n);
    }
    std::sort(found.begin(), found.end());
    items = std::move(found);
    ListIndex.setQuietly(-1);
    ListRevision = ListRevision + 1;
}

PictureBox::PictureBox(Form& f, std::string name, int width, int height)
    : Control(f, std::move(name), ControlKind::PictureBox), Width(width), Height(height),
      pixels(static_cast<size_t>(width) * static_cast<size_t>(height), 0xFFFFFF) {}

void PictureBox::Cls(uint32_t colour) { std::fill(pixels.begin(), pixels.end(), colour); }

void PictureBox::VLine(int x, uint32_t colour) {
    if (x < 0 || x >= Width) return;
    for (int y = 0; y < Height; ++y) pixels[static_cast<size_t>(y) * Width + x] = colour;
}

void PictureBox::PSet(int x, int y, uint32_t colour) {
    if (x < 0 || y < 0 || x >= Width || y >= Height) return;
    pixels[static_cast<size_t>(y) * Width + x] = colour;
}

Shape::Shape(Form& f, std::string name) : Control(f, std::move(name), ControlKind::Shape) {}

LineControl::LineControl(Form& f, std::string name) : Control(f, std::move(name), ControlKind::Line) {
    Visible.setQuietly(false);
}

Timer::Timer(Form& f, std::string name, int interval, std::function<void()> tick)
    : Control(f, std::move(name), ControlKind::Timer), Tick(std::move(tick)) {
    Interval.setQuietly(interval);
    Visible.setQuietly(false);
}

void MenuEntry::onChanged(const void* prop) {
    if (prop == &Checked && CheckedChange) CheckedChange();
}

MenuEntry::MenuEntry(Form& f, std::string name, std::string caption, MenuEntry* parent, std::function<void()> click)
    : Control(f, std::move(name), ControlKind::MenuEntry), Parent(parent), Click(std::move(click)) {
    Caption.setQuietly(std::move(caption));
    if (parent) parent->children.push_back(this);
}
