// The text tool: the box follows a left drag, Enter burns the text, drawn by
// the host without anti-aliasing, into the picture through DeliverPixel (so
// the fill settings apply to the letters) or, in the alpha fill mode, into
// alpha. Only exact black pixels of the drawn text count.
#include <algorithm>
#include <cmath>
#include <vector>

#include "canvas/Shapes.h"
#include "canvas/TextTool.h"
#include "canvas/tools/Tools.h"
#include "colour/DeliverPixel.h"
#include "colour/Gradient.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/document/Buffers.h"
#include "core/document/Undo.h"
#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Codes.h"

FontChoice TextFont;
uint8_t TextToAlpha = 0;

namespace Nudge {
Form form("Nudge", "Text nudge tool");
CommandButton Command1(form, "Command1", "Up");
CommandButton Command2(form, "Command2", "Down");
CommandButton Command3(form, "Command3", "Left");
CommandButton Command4(form, "Command4", "Right");
}  // namespace Nudge

namespace {
using canvastool::Round16;
using canvastool::Zoom;

// The box's height: a line of the scaled font with a little room.
int BoxHeight() { return static_cast<int>(std::ceil(TextToolFont().Size * 96.0 / 72.0 * 1.5)) + 6; }

void MoveBox(int dx, int dy) {
    Form1::TextToolFrame.Left = Form1::TextToolFrame.Left + dx;
    Form1::TextToolFrame.Top = Form1::TextToolFrame.Top + dy;
}

// One picture pixel of the box: the zoom's worth of window pixels.
void NudgeBy(int dx, int dy) {
    const int step = std::max(1, static_cast<int>(std::lround(Zoom())));
    MoveBox(dx * step, dy * step);
}

void Option19_Click() {
    if (!Form2::Option19.Value) return;
    // The box takes the font's height now and its width as the text is typed.
    Form1::TextToolFrame.Height = BoxHeight();
    Form1::TextTool.Visible = true;
}

void Move(int16_t Button, int16_t, float X, float Y) {
    if (Button != MouseButton::Left) return;
    Form1::TextToolFrame.Left = Round16(X);
    Form1::TextToolFrame.Top = Round16(Y);
}

// The letters' pixels in picture pixels, with the box's offset; each inside
// the picture goes through `put`.
template <typename Put>
void WalkLetters(const std::vector<uint8_t>& pixels, int width, int height, Put put) {
    const float z = Zoom();
    const float left = static_cast<float>(Form1::TextToolFrame.Left.get()), top = static_cast<float>(Form1::TextToolFrame.Top.get());
    const int W = PictureWidth({&BufR, &BufG, &BufB, &BufA}), H = PictureHeight({&BufR, &BufG, &BufB, &BufA});
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            if (pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)] != 0) continue;
            const int px = vb::CInt(std::clamp(left / z + x, -30000.0f, 30000.0f));
            const int py = vb::CInt(std::clamp(top / z + y, -30000.0f, 30000.0f));
            if (px >= 0 && py >= 0 && px < W && py < H) put(px, py);
        }
}

void BurnIntoPicture(const std::vector<uint8_t>& pixels, int width, int height) {
    LoadFillOpacity();
    const uint32_t colour = Form2::Shape4.FillColor;
    const int l = Form1::TextToolFrame.Left, t = Form1::TextToolFrame.Top;
    DeliverRun run = DeliverBegin();
    WalkLetters(pixels, width, height, [&](int px, int py) {
        const uint32_t c = DeliverPixel(run.settings, run.state, colour, px, py, l, t, l + width, t + height);
        BufR(px, py) = vb::RedOf(c);
        BufG(px, py) = vb::GreenOf(c);
        BufB(px, py) = vb::BlueOf(c);
    });
    DeliverEnd(run.state);
}

void BurnIntoAlpha(const std::vector<uint8_t>& pixels, int width, int height) {
    const int W = PictureWidth({&BufA}), H = PictureHeight({&BufA});
    for (int y = 0; y <= H - 2; ++y) std::fill_n(BufA.row(y), std::max(W - 1, 0), uint8_t{0});
    WalkLetters(pixels, width, height, [](int px, int py) { BufA(px, py) = 255; });
    SetAlphaOn(true);
    Form1::Timer1.TimerEnabled = true;
    InitMarquee();
}

void Text_FontSettings_Click() {
    if (auto f = host().ChooseFont(TextFont)) {
        TextFont = *f;
        Form1::TextToolFrame.Height = BoxHeight();
        Form1::TextTool_Change();
    }
}

void Text_NudgeTool_Click() { Show(Nudge::form, false, &MDIForm1::form); }
}  // namespace

FontChoice TextToolFont() {
    FontChoice f = TextFont;
    f.Size = std::max(1, static_cast<int>(std::lround(f.Size * Zoom())));
    return f;
}

namespace Form1 {
void TextTool_Change() {
    const FontChoice f = TextToolFont();
    const int text = host().TextWidth(TextTool.Text, f), blank = host().TextWidth(" ", f);
    TextToolFrame.Width = std::max(text, 0) + std::max(blank, 0) + 8;
}

void TextTool_KeyPress(int16_t& KeyAscii) {
    if (KeyAscii != VirtualKey::Return) return;
    KeyAscii = 0;  // no line break enters the box
    const std::string text = TextTool.Text;
    if (text.empty() || !DocumentExists()) return;
    const int width = TextToolFrame.Width, height = TextToolFrame.Height;
    std::vector<uint8_t> pixels;
    if (width <= 0 || height <= 0 || !host().RasteriseText(text, TextToolFont(), width, height, pixels)) {
        Kelpwick_MsgBox("The text could not be drawn: no font is installed.");
        return;
    }
    SaveUndo();
    TextToAlpha = App.FillMode == kwmode::FillMode::Alpha ? 255 : 0;
    if (TextToAlpha == 0) BurnIntoPicture(pixels, width, height);
    else BurnIntoAlpha(pixels, width, height);
    RedisplayWindow();
}
}  // namespace Form1

Rows TextRows() {
    Rows rows;
    ToolRow tool{&Form2::Option19, "Text.  Right click for options."};
    tool.down = Move;
    tool.move = Move;
    tool.settings = [] { host().PopupMenu(Menus::Texttool); };
    tool.marksPicture = false;  // the press only places the box; Enter is the undo step
    rows.tools = {tool};
    rows.menus = {{&Menus::Text_FontSettings, Text_FontSettings_Click},
                  {&Menus::Text_FillSettings, win_Gradient_Click},
                  {&Menus::Text_NudgeTool, Text_NudgeTool_Click}};
    rows.controls = {OnEvent(Form2::Option19, ControlEvent::Click, Option19_Click),
                     OnEvent(Form1::TextTool, ControlEvent::Change, Form1::TextTool_Change),
                     OnEvent(Nudge::Command1, ControlEvent::Click, [] { NudgeBy(0, -1); }),
                     OnEvent(Nudge::Command2, ControlEvent::Click, [] { NudgeBy(0, 1); }),
                     OnEvent(Nudge::Command3, ControlEvent::Click, [] { NudgeBy(-1, 0); }),
                     OnEvent(Nudge::Command4, ControlEvent::Click, [] { NudgeBy(1, 0); })};
    return rows;
}
