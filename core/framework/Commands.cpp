// The installed rows and the binding of menu entries, control events and tool
// buttons from them. Every slot is bound once: a second row for the same entry,
// event or key is a mistake in the tables, refused at start-up.
#include "core/framework/Commands.h"

#include <algorithm>

Rows& Rows::operator+=(const Rows& more) {
    menus.insert(menus.end(), more.menus.begin(), more.menus.end());
    keys.insert(keys.end(), more.keys.begin(), more.keys.end());
    tools.insert(tools.end(), more.tools.begin(), more.tools.end());
    controls.insert(controls.end(), more.controls.begin(), more.controls.end());
    return *this;
}

namespace {
std::string Where(const Control& c) { return c.form.Name + "." + c.Name; }

std::function<void()>* CommandSlot(Control& c, ControlEvent e) {
    switch (e) {
        case ControlEvent::Click:
            if (c.Kind == ControlKind::CheckBox) return &static_cast<CheckBox&>(c).Click;
            if (c.Kind == ControlKind::OptionButton) return &static_cast<OptionButton&>(c).Click;
            if (c.Kind == ControlKind::CommandButton) return &static_cast<CommandButton&>(c).Click;
            if (c.Kind == ControlKind::ListBox || c.Kind == ControlKind::ComboBox ||
                c.Kind == ControlKind::FileListBox)
                return &static_cast<ListBox&>(c).Click;
            return nullptr;
        case ControlEvent::Change:
            if (c.Kind == ControlKind::Slider) return &static_cast<Slider&>(c).Change;
            if (c.Kind == ControlKind::TextBox) return &static_cast<TextBox&>(c).Change;
            return nullptr;
        case ControlEvent::Paint:
            return c.Kind == ControlKind::PictureBox ? &static_cast<PictureBox&>(c).Paint : nullptr;
        case ControlEvent::Timer:
            return c.Kind == ControlKind::Timer ? &static_cast<Timer&>(c).Tick : nullptr;
        default:
            return nullptr;
    }
}

MouseProcedure* MouseSlot(Control& c, ControlEvent e) {
    if (c.Kind == ControlKind::CommandButton && e == ControlEvent::MouseDown)
        return &static_cast<CommandButton&>(c).MouseDown;
    if (c.Kind != ControlKind::PictureBox) return nullptr;
    auto& p = static_cast<PictureBox&>(c);
    if (e == ControlEvent::MouseDown) return &p.MouseDown;
    if (e == ControlEvent::MouseMove) return &p.MouseMove;
    return nullptr;
}

template <typename Slot, typename Procedure>
void Bind(Slot* slot, const Procedure& procedure, const std::string& what) {
    if (!slot) throw RowError(what + ": the control has no such event");
    if (!procedure) throw RowError(what + ": a row without a procedure");
    if (*slot) throw RowError(what + ": bound twice");
    *slot = procedure;
}
}  // namespace

void CommandTable::installMenu(const MenuRow& row) {
    if (!row.entry->children.empty()) throw RowError(Where(*row.entry) + ": a menu of entries takes no command");
    Bind(&row.entry->Click, row.command, Where(*row.entry));
    rows_.menus.push_back(row);
}

void CommandTable::installKey(const KeyRow& row) {
    for (const KeyRow& k : rows_.keys)
        if (k.on == row.on && k.key == row.key && (row.on == KeyEvent::Press || k.shift == row.shift))
            throw RowError("key " + std::to_string(row.key) + " claimed twice");
    if (!row.command) throw RowError("key " + std::to_string(row.key) + ": a row without a command");
    rows_.keys.push_back(row);
}

void CommandTable::installControl(const ControlRow& row) {
    const std::string what = Where(*row.control);
    if (row.event == ControlEvent::MouseDown || row.event == ControlEvent::MouseMove)
        Bind(MouseSlot(*row.control, row.event), row.mouse, what);
    else
        Bind(CommandSlot(*row.control, row.event), row.procedure, what);
    rows_.controls.push_back(row);
}

void CommandTable::installTools(const std::vector<ToolRow>& tools) {
    for (const ToolRow& t : tools) {
        if (toolOf(*t.button)) throw RowError(Where(*t.button) + ": a tool with two rows");
        const ToolRow* first = rows_.tools.empty() ? &t : &rows_.tools.front();
        if (&t.button->form != &first->button->form || t.button->OptionGroup != first->button->OptionGroup)
            throw RowError(Where(*t.button) + ": not a button of the tool group");
        t.button->ToolTipText = t.toolTip;
        rows_.tools.push_back(t);
    }
    if (rows_.tools.empty()) return;
    // A tool shows once it has a row; the other buttons of the group wait for theirs.
    const OptionButton& first = *rows_.tools.front().button;
    for (Control* c : first.form.controls) {
        if (c->Kind != ControlKind::OptionButton) continue;
        auto* b = static_cast<OptionButton*>(c);
        if (b->OptionGroup == first.OptionGroup) b->Visible.setQuietly(toolOf(*b) != nullptr);
    }
}

void CommandTable::install(const Rows& rows) {
    for (const MenuRow& r : rows.menus) installMenu(r);
    for (const KeyRow& r : rows.keys) installKey(r);
    for (const ControlRow& r : rows.controls) installControl(r);
    installTools(rows.tools);
}

const ToolRow* CommandTable::toolOf(const OptionButton& button) const {
    for (const ToolRow& t : rows_.tools)
        if (t.button == &button) return &t;
    return nullptr;
}

const ToolRow* CommandTable::toolDown() const {
    for (const ToolRow& t : rows_.tools)
        if (t.button->Value) return &t;
    return nullptr;
}

void CommandTable::keyPress(int16_t keyAscii) const {
    for (const KeyRow& k : rows_.keys)
        if (k.on == KeyEvent::Press && k.key == keyAscii) k.command();
}

void CommandTable::keyUp(int16_t keyCode, int16_t shift) const {
    for (const KeyRow& k : rows_.keys)
        if (k.on == KeyEvent::Release && k.key == keyCode && k.shift == shift) k.command();
}

void CommandTable::keyDown(int16_t keyCode, int16_t shift) const {
    for (const KeyRow& k : rows_.keys)
        if (k.on == KeyEvent::Down && k.key == keyCode && k.shift == shift) k.command();
}

CommandTable& Commands() {
    static CommandTable table;
    return table;
}

void PickTool(OptionButton& tool) {
    if (tool.Value) {
        if (tool.Click) tool.Click();
    } else {
        tool.Value = true;
    }
}
