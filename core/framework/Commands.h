// The rows by which each folder hands its commands to the program: menu entry
// -> command, key -> command, tool -> its procedures, and the few controls of
// one folder's form whose procedure lives in another folder. The start-up
// composition gathers every folder's rows and installs them here, once; the
// canvas handlers, the key procedures and the shell's tool row read them back.
#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/framework/controls.h"

using Command = std::function<void()>;
using MouseProcedure = std::function<void(int button, int shift, float x, float y)>;

struct MenuRow {
    MenuEntry* entry;
    Command command;
};

enum class KeyEvent { Press, Release, Down };
// A key press is matched by its character alone, whatever the shift state; a
// key going down or up by its virtual key code together with the exact shift state.
struct KeyRow {
    KeyEvent on;
    int16_t key;    // Press: the character (KeyChar for control codes); Release, Down: a VirtualKey
    int16_t shift;  // Release and Down only: a ShiftState
    Command command;
};
inline KeyRow OnPress(int16_t character, Command command) { return {KeyEvent::Press, character, 0, std::move(command)}; }
inline KeyRow OnRelease(int16_t code, int16_t shift, Command command) {
    return {KeyEvent::Release, code, shift, std::move(command)};
}
inline KeyRow OnDown(int16_t code, int16_t shift, Command command) {
    return {KeyEvent::Down, code, shift, std::move(command)};
}

// A canvas tool. The canvas handlers run their shared guards, then the procedures
// of the tool whose button is down, with the event's button, shift and window pixels.
using ToolProcedure = void (*)(int16_t Button, int16_t Shift, float X, float Y);
struct ToolRow {
    OptionButton* button;  // an option button of the tool panel's tool group
    const char* toolTip;
    ToolProcedure down = nullptr, move = nullptr, up = nullptr;
    void (*settings)() = nullptr;  // a right click on the button: the tool's settings popup
    // A press is an undo step and lays its first mark through the move; false for
    // a tool that only reads the picture.
    bool marksPicture = true;
    bool brushBox = false;   // the custom brush's box follows the cursor
    bool crosshair = false;  // a crosshair follows the cursor while no button is held
};

enum class ControlEvent { Click, Change, Paint, MouseDown, MouseMove, Timer };
// One event of a control whose procedure lives in another folder than its form.
struct ControlRow {
    Control* control;
    ControlEvent event;
    Command procedure;     // Click, Change, Paint, Timer
    MouseProcedure mouse;  // MouseDown, MouseMove
};
inline ControlRow OnEvent(Control& c, ControlEvent e, Command procedure) { return {&c, e, std::move(procedure), {}}; }
inline ControlRow OnMouse(Control& c, ControlEvent e, MouseProcedure mouse) { return {&c, e, {}, std::move(mouse)}; }

// What one folder contributes.
struct Rows {
    std::vector<MenuRow> menus;
    std::vector<KeyRow> keys;
    std::vector<ToolRow> tools;
    std::vector<ControlRow> controls;
    Rows& operator+=(const Rows& more);
};

// A row that cannot be installed: a menu entry or event bound twice, an event
// that the control does not have, a key claimed twice, a tool outside the tool group.
struct RowError : std::logic_error {
    using std::logic_error::logic_error;
};

class CommandTable {
public:
    // Binds the rows' menu entries and control events, shows the tool buttons
    // that have a row and hides the others of their group. Throws RowError.
    void install(const Rows& rows);
    const Rows& rows() const { return rows_; }
    // The row of the tool whose button is down, or nullptr.
    const ToolRow* toolDown() const;
    const ToolRow* toolOf(const OptionButton& button) const;
    // The commands of the rows for this key, compared in table order.
    void keyPress(int16_t keyAscii) const;
    void keyUp(int16_t keyCode, int16_t shift) const;
    void keyDown(int16_t keyCode, int16_t shift) const;

private:
    void installMenu(const MenuRow& row);
    void installKey(const KeyRow& row);
    void installControl(const ControlRow& row);
    void installTools(const std::vector<ToolRow>& tools);
    Rows rows_;
};

// The program's table.
CommandTable& Commands();

// A tool key: the button's click runs, and the button is down.
void PickTool(OptionButton& tool);
