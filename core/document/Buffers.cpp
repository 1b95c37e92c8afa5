// Planes, the size state, document creation and the whole-buffer commands.
#include "core/document/Buffers.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/CanvasSize.h"
#include "core/frame/Form2.h"
#include "core/framework/Host.h"
#include "core/document/Undo.h"
#include "core/framework/vb.h"

Plane BufR, BufG, BufB, BufA;
Plane SwapR, SwapG, SwapB;
Plane UndoR, UndoG, UndoB;
Plane MarqueePlane;
Plane FadeR, FadeG, FadeB;
Plane TempPlane;
Plane BrushR, BrushG, BrushB, BrushA;
int16_t BrushWidth = 0, BrushHeight = 0;
Hook<> DocumentClosing;
Hook<uint32_t> DocumentCreated;
Hook<bool> AlphaSwitched;

namespace {
int SizeFromText(const std::string& s) {
    double v = vb::RoundEven(vb::Val(s));
    if (!(v > -2147483648.0 && v < 2147483647.0)) return 0;
    return static_cast<int>(v);
}
}  // namespace

int PictureWidth(std::initializer_list<const Plane*> planes) {
    int w = BufferWidth();
    for (const Plane* p : planes) w = std::min(w, p->ubX());
    return std::max(w, 0);
}
int PictureHeight(std::initializer_list<const Plane*> planes) {
    int h = BufferHeight();
    for (const Plane* p : planes) h = std::min(h, p->ubY());
    return std::max(h, 0);
}

int BufferWidth() { return SizeFromText(CanvasSize::Text1.Text); }
int BufferHeight() { return SizeFromText(CanvasSize::Text2.Text); }

void SetBufferSize(int w, int h) {
    CanvasSize::Text1.Text = std::to_string(w);
    CanvasSize::Text2.Text = std::to_string(h);
}

bool DocumentExists() { return !BufR.empty(); }

bool AlphaOn() { return App.AlphaOff == 0; }

void SetAlphaOn(bool on) {
    App.AlphaOff = on ? 0 : 255;
    AlphaSwitched.raise(on);
}

uint64_t ReadAvailableMemory() {
    std::ifstream in("/proc/meminfo");
    std::string key;
    uint64_t kb = 0;
    std::string unit;
    while (in >> key >> kb >> unit)
        if (key == "MemAvailable:") return kb * 1024;
    return UINT64_MAX;  // no way to tell: let the allocation decide
}

std::function<uint64_t()> AvailableMemory = ReadAvailableMemory;

void FillPicture(Plane& p, uint8_t v) {
    int w = std::min(BufferWidth(), p.ubX()), h = std::min(BufferHeight(), p.ubY());
    for (int y = 0; y < h; ++y) std::fill_n(p.row(y), static_cast<size_t>(std::max(w, 0)), v);
}

namespace {
// Everything a new document allocates, built aside so that a failure keeps the old one.
struct NewPlanes {
    UndoRingSet ring;
    Plane r, g, b, a, sr, sg, sb, marquee;
};

void RestoreSizeText() {
    if (DocumentExists()) SetBufferSize(BufR.ubX(), BufR.ubY());
    else SetBufferSize(320, 240);
}

// The first writing of one new block of planes: rows of `stride` bytes, the
// picture (w by h) in `value`, the extra column and row and any other row 0.
struct FirstWrite {
    uint8_t* data;
    size_t stride;
    size_t rows;
    int w, h;
    uint8_t value;
};

// Above this many bytes a new document shows its progress while it is written.
constexpr uint64_t ProgressBytes = 64ull << 20;

void WriteRow(const FirstWrite& f, size_t y) {
    uint8_t* row = f.data + y * f.stride;
    size_t picture = y < static_cast<size_t>(f.h) ? static_cast<size_t>(f.w) : 0;
    std::fill_n(row, picture, f.value);
    std::fill(row + picture, row + f.stride, uint8_t{0});
}

// Every new plane is written exactly once, here: the allocation leaves them
// unzeroed. A big document shows its progress in the status window, whose
// steps let the windows repaint meanwhile.
void WriteNewPlanes(const std::vector<FirstWrite>& writes) {
    uint64_t total = 0, done = 0;
    for (const FirstWrite& f : writes) total += static_cast<uint64_t>(f.stride) * f.rows;
    const bool progress = total > ProgressBytes;
    if (progress) ShowStatus("Processing...");
    int shown = 0;
    for (const FirstWrite& f : writes)
        for (size_t y = 0; y < f.rows; ++y) {
            WriteRow(f, y);
            done += f.stride;
            const int percent = static_cast<int>(done * 100 / total);
            if (progress && percent != shown) Bar(shown = percent);
        }
    if (progress) HideStatus();
}

std::vector<FirstWrite> FirstWrites(NewPlanes& n, int w, int h, uint32_t colour) {
    std::vector<FirstWrite> writes;
    auto plane = [&](Plane& p, uint8_t v) {
        writes.push_back({p.data(), p.stride(), static_cast<size_t>(p.ubY()) + 1, w, h, v});
    };
    plane(n.r, vb::RedOf(colour));
    plane(n.g, vb::GreenOf(colour));
    plane(n.b, vb::BlueOf(colour));
    plane(n.a, 255);
    plane(n.sr, vb::RedOf(colour));
    plane(n.sg, vb::GreenOf(colour));
    plane(n.sb, vb::BlueOf(colour));
    plane(n.marquee, 0);
    // The undo slots are zeroed as one block each: every page is taken now, not
    // in the middle of a later stroke.
    for (Plane3* p : {&n.ring.r, &n.ring.g, &n.ring.b, &n.ring.a})
        writes.push_back({p->slot(0), p->stride(), (static_cast<size_t>(p->ubY()) + 1) * (p->ubZ() + 1), 0, 0, 0});
    return writes;
}
}  // namespace

bool CreateNewDocument(bool ask) {
    if (ask && Kelpwick_QuestionBox("This will replace the existing buffer.") == 2) return false;
    int w = BufferWidth(), h = BufferHeight();
    if (w < 1 || h < 1 || w > MaxBufferSide || h > MaxBufferSide) {
        Kelpwick_MsgBox("A buffer of " + std::to_string(w) + " by " + std::to_string(h) +
                        " pixels cannot be made: each side must be between 1 and " +
                        std::to_string(MaxBufferSide) + " pixels.");
        RestoreSizeText();
        if (DocumentExists()) return false;
        w = BufferWidth();
        h = BufferHeight();
    }
    // Check the memory first: the system may promise more than it can give, and
    // the first writing of the planes would then end the program instead of failing here. The old
    // document is freed only after the new one exists, so it does not count as free.
    const uint64_t plane = static_cast<uint64_t>(w + 1) * static_cast<uint64_t>(h + 1);
    const uint64_t available = AvailableMemory ? AvailableMemory() : UINT64_MAX;
    auto need = [&](int slots) { return plane * (8 + 4 * static_cast<uint64_t>(slots)); };
    int16_t last = UndoSlotsForBudget(App.UndoMegs, w, h);
    if (need(last + 1) > available) last = 1;  // the ring keeps its two slots
    NewPlanes n;
    try {
        if (need(2) > available) throw std::bad_alloc();
        n.ring = MakeUndoRing(App.UndoMegs, w, h, last, false);
        for (Plane* p : {&n.r, &n.g, &n.b, &n.a, &n.sr, &n.sg, &n.sb, &n.marquee}) p->alloc(w, h, false);
    } catch (const std::bad_alloc&) {
        bool first = !DocumentExists();
        Kelpwick_MsgBox("Not enough memory for a buffer of " + std::to_string(w) + " by " + std::to_string(h) +
                        (first ? " pixels." : " pixels. The current buffer is kept."));
        RestoreSizeText();
        // With no document yet, the program goes on with one of the default size.
        if (first && (w != 320 || h != 240)) return CreateNewDocument(false);
        return false;
    }
    // Written before the old document goes, so that it stays on screen meanwhile.
    const uint32_t sec = Form2::SecondaryColour();
    ++App.LockCount;
    WriteNewPlanes(FirstWrites(n, w, h, sec));
    App.LockCount = 0;
    DocumentClosing.raise();
    InstallUndoRing(std::move(n.ring));
    UndoIndex = 0;
    BufR.swap(n.r); BufG.swap(n.g); BufB.swap(n.b); BufA.swap(n.a);
    SwapR.swap(n.sr); SwapG.swap(n.sg); SwapB.swap(n.sb);
    MarqueePlane.swap(n.marquee);
    TempPlane.alloc(1, 1);
    DocumentCreated.raise(sec);
    return true;
}

void SwapBuffers() {
    App.SwapShown = App.SwapShown ? 0 : 255;
    // The arrays themselves change places; no pixel moves.
    BufR.swap(SwapR);
    BufG.swap(SwapG);
    BufB.swap(SwapB);
    TempPlane.alloc(1, 1);
}

bool FindSelection(int& left, int& top, int& right, int& bottom) {
    int w = PictureWidth({&BufA, &BufR, &SwapR}), h = PictureHeight({&BufA, &BufR, &SwapR});
    left = w;
    top = h;
    right = -1;
    bottom = -1;
    for (int y = 0; y < h; ++y) {
        const uint8_t* a = BufA.row(y);
        for (int x = 0; x < w; ++x)
            if (a[x]) {
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    }
    return right >= 0;
}

bool CustomBrushUsable() {
    return BrushWidth > 0 && BrushHeight > 0 && BrushR.ubX() >= BrushWidth && BrushR.ubY() >= BrushHeight &&
           BrushG.ubX() == BrushR.ubX() && BrushB.ubX() == BrushR.ubX() && BrushG.ubY() == BrushR.ubY() &&
           BrushB.ubY() == BrushR.ubY();
}
