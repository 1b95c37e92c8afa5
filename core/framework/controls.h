// Control models: the behaviour of the classic controls that the logic relies on.
// A property written from code fires the same event the user would fire, so a
// preset works by writing sliders. Each model has one observer hook for its view
// and knows nothing of the toolkit.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class PropOwner {
public:
    virtual ~PropOwner() = default;
    // Called after a property really changed; `prop` is its address.
    virtual void propertyChanged(const void* prop) = 0;
};

template <typename T>
class Prop {
public:
    Prop(PropOwner* owner, T init = T{}) : owner_(owner), v_(std::move(init)) {}
    Prop(const Prop&) = delete;
    operator const T&() const { return v_; }
    const T& get() const { return v_; }
    Prop& operator=(const T& v) {
        if (v == v_) return *this;
        v_ = v;
        owner_->propertyChanged(this);
        return *this;
    }
    Prop& operator=(const Prop& o) { return *this = o.v_; }
    // Writes without events: for views mirroring a state they were told about.
    void setQuietly(const T& v) { v_ = v; }

private:
    PropOwner* owner_;
    T v_;
};

struct Form;

enum class ControlKind {
    Label, Slider, CheckBox, OptionButton, TextBox, ComboBox, ListBox, FileListBox,
    CommandButton, PictureBox, Shape, Line, Timer, MenuEntry, Frame
};

class Control : public PropOwner {
public:
    Control(Form& form, std::string name, ControlKind kind);
    Control(const Control&) = delete;
    Form& form;
    const std::string Name;
    const ControlKind Kind;
    Prop<std::string> Caption{this};
    Prop<bool> Visible{this, true};
    Prop<bool> Enabled{this, true};
    Prop<uint32_t> BackColor{this, 0xE0E0E0};
    Prop<uint32_t> ForeColor{this, 0x000000};
    std::string ToolTipText;
    std::string Tag;
    int Group = 0;  // layout group for views: controls sharing a group sit in one row
    std::function<void()> viewHook;  // the one observer: a view refreshes itself

    void propertyChanged(const void* prop) override;
    void notifyView() {
        if (viewHook) viewHook();
    }

protected:
    virtual void onChanged(const void* /*prop*/) {}
};

class Label : public Control {
public:
    Label(Form& f, std::string name, std::string caption = {});
};

// What a button does for its window beyond its own click: the default button is
// pressed by Return, the cancel button by closing the window.
enum class ButtonRole { Plain, Default, Cancel };

class CommandButton : public Control {
public:
    CommandButton(Form& f, std::string name, std::string caption, std::function<void()> click = {},
                  ButtonRole role = ButtonRole::Plain);
    std::function<void()> Click;
    // A press of any button; views send the right button only, for a popup menu.
    std::function<void(int button, int shift, float x, float y)> MouseDown;
    // A colour dragged from a well and dropped on the button; views accept such
    // drops, and show the back colour, only when this is set.
    std::function<void(uint32_t colour)> ColourDrop;
    ButtonRole Role;
    void press() {
        if (Click && Enabled) Click();
    }
};

class Slider : public Control {
public:
    Slider(Form& f, std::string name, int min, int max, int value, std::function<void()> change = {});
    Prop<int> Min{this}, Max{this}, Value{this};
    int SmallChange = 1, LargeChange = 10;
    std::function<void()> Change;  // Value really changed
    std::function<void()> Scroll;  // while dragging
    void scrollTo(int v);          // a drag step: fires Scroll, then Change

protected:
    void onChanged(const void* prop) override;
};

class CheckBox : public Control {
public:
    CheckBox(Form& f, std::string name, std::string caption, int value = 0, std::function<void()> click = {});
    Prop<int> Value{this};
    std::function<void()> Click;

protected:
    void onChanged(const void* prop) override;
};

class OptionButton : public Control {
public:
    // Buttons of one form with the same `group` exclude one another.
    OptionButton(Form& f, std::string name, std::string caption, int group = 0, bool value = false,
                 std::function<void()> click = {});
    Prop<bool> Value{this};
    int OptionGroup;
    std::function<void()> Click;

protected:
    void onChanged(const void* prop) override;
};

class TextBox : public Control {
public:
    TextBox(Form& f, std::string name, std::string text = {}, std::function<void()> change = {});
    Prop<std::string> Text{this};
    bool MultiLine = false;
    std::function<void()> Change;
    std::function<void()> KeyUp;  // after each key the user typed
    std::function<void()> LostFocus;  // the user left the box (Return or another control)

protected:
    void onChanged(const void* prop) override;
};

// List and combo boxes: items plus a selected index (-1 for none). Setting ListIndex fires Click.
class ListBox : public Control {
public:
    ListBox(Form& f, std::string name, std::function<void()> click = {}, ControlKind kind = ControlKind::ListBox);
    std::vector<std::string> items;
    Prop<int> ListIndex{this, -1};
    Prop<int> ListRevision{this, 0};  // bumped when items change, so views rebuild
    std::function<void()> Click;
    std::function<void()> DblClick;  // a double click on an item
    void AddItem(std::string s);
    void Clear();
    int ListCount() const { return static_cast<int>(items.size()); }
    std::string Text() const;

protected:
    void onChanged(const void* prop) override;
};

class ComboBox : public ListBox {
public:
    ComboBox(Form& f, std::string name, std::function<void()> click = {});
};

class FileListBox : public ListBox {
public:
    FileListBox(Form& f, std::string name, std::string pattern, std::function<void()> click = {});
    std::string Path;
    std::string Pattern;
    void Refresh();  // reads the files of Path matching Pattern, sorted
};

// A picture surface the logic draws on: 32-bit 0x00BBGGRR pixels, plus a
// centred text line. Views show it as it is.
class PictureBox : public Control {
public:
    PictureBox(Form& f, std::string name, int width, int height);
    int Width, Height;
    std::vector<uint32_t> pixels;
    Prop<std::string> Text{this};
    std::function<void()> Paint;
    std::function<void(int button, int shift, float x, float y)> MouseDown, MouseMove, MouseUp;
    void Cls(uint32_t colour);
    void VLine(int x, uint32_t colour);
    void PSet(int x, int y, uint32_t colour);
    void Refresh() { notifyView(); }
};

class Shape : public Control {
public:
    Shape(Form& f, std::string name);
    Prop<uint32_t> FillColor{this};
    Prop<int> Left{this}, Top{this}, Width{this}, Height{this};
};

class LineControl : public Control {
public:
    LineControl(Form& f, std::string name);
    Prop<float> X1{this}, Y1{this}, X2{this}, Y2{this};
};

// A one-shot-repeating timer. The shell runs it; tests call fire(). An interval
// of 0 keeps it from ever firing, enabled or not.
class Timer : public Control {
public:
    Timer(Form& f, std::string name, int interval, std::function<void()> tick = {});
    Prop<bool> TimerEnabled{this};
    Prop<int> Interval{this};
    std::function<void()> Tick;
    void fire() {
        if (TimerEnabled && Interval > 0 && Tick) Tick();
    }
};

class MenuEntry : public Control {
public:
    // parent == nullptr: a top-level menu of the form's menu bar (or a popup menu).
    MenuEntry(Form& f, std::string name, std::string caption, MenuEntry* parent,
              std::function<void()> click = {});
    MenuEntry* Parent;
    Prop<bool> Checked{this};
    bool Checkable = false;  // the entry keeps room for a check mark: it is a switch or one of a choice
    std::function<void()> Click;
    std::function<void()> CheckedChange;  // Checked really changed, whoever wrote it
    std::vector<MenuEntry*> children;
    void press() {
        if (Click && Enabled) Click();
    }

protected:
    void onChanged(const void* prop) override;
};

// A window or panel. Its controls register themselves in declaration order.
struct Form : PropOwner {
    Form(std::string name, std::string caption);
    Form(const Form&) = delete;
    const std::string Name;
    Prop<std::string> Caption{this};
    Prop<bool> Visible{this};
    Prop<int> MousePointer{this};
    Prop<uint32_t> BackColor{this, 0xE0E0E0};
    std::string Tag;
    bool Loaded = false;
    bool Modal = false;
    std::vector<Control*> controls;
    std::function<void()> Load, Unload, Paint, Resize, Activate, Deactivate, Click, DblClick;
    std::function<void()> viewHook;

    void propertyChanged(const void*) override {
        if (viewHook) viewHook();
    }
    Control* find(const std::string& name) const;
    // The first button of the form with this role, or nullptr.
    CommandButton* button(ButtonRole role) const;
};

std::vector<Form*>& AllForms();
Form* FindForm(const std::string& name);
