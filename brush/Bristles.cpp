// The bristle brush: a fan of hairs at fixed polar offsets from the cursor.
// Each move draws every hair from its old end to its new one, in the primary
// colour mixed with the picture as it was before the stroke.
#include <algorithm>
#include <cmath>

#include "brush/Spraxel.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/Form2.h"
#include "core/framework/vb.h"
#include "native/Lines.h"

std::vector<Bristle> Bristles(1);
int32_t BristleCount = 0, BristleRadius = 0;
uint8_t BristleBleed = 0;

namespace {
int16_t Hold16(double v) { return vb::CInt(std::clamp(v, -32768.0, 32767.0)); }

// The picture before the stroke: the clean copy the press's undo step made,
// or the picture itself when there is none of its size.
const Plane& Before(const Plane& undo, const Plane& now) {
    return undo.ubX() == now.ubX() && undo.ubY() == now.ubY() && !undo.empty() ? undo : now;
}
}  // namespace

void Setup_Bristles() {
    BristleCount = std::clamp(vb::CLng(std::clamp(vb::Val(Spraxel::Text14.Text.get()), -1e9, 1e9)), 1, 100000);
    BristleRadius = vb::CLng(std::clamp(vb::Val(Spraxel::Text11.Text.get()), -32767.0, 32767.0));
    BristleBleed = static_cast<uint8_t>(Spraxel::HProp3.Value);
    Bristles.assign(static_cast<size_t>(BristleCount) + 1, Bristle{});
    for (int32_t i = 1; i <= BristleCount; ++i) {
        Bristles[static_cast<size_t>(i)].Angle = vb::CInt(vb::Rnd() * 360);
        Bristles[static_cast<size_t>(i)].Radius = vb::CInt(vb::Rnd() * BristleRadius);
    }
}

void InitBristles(int16_t X, int16_t Y) {
    for (Bristle& b : Bristles) {
        b.X = Hold16(X + b.Radius * 0.9 * std::sin(b.Angle * 0.0175));
        b.Y = Hold16(Y + b.Radius * 0.9 * std::cos(b.Angle * 0.0175));
    }
}

void DrawBristles(float X, float Y, int16_t OldX, int16_t OldY) {
    (void)OldY;  // the speed is measured along x alone
    if (BufR.empty()) return;
    const int W = PictureWidth({&BufR, &BufG, &BufB}), H = PictureHeight({&BufR, &BufG, &BufB});
    const uint32_t primary = Form2::Shape4.FillColor;
    const int R = vb::RedOf(primary), G = vb::GreenOf(primary), B = vb::BlueOf(primary);
    // Only a fast move to the right narrows the fan: the limit works from above.
    const int32_t s = std::min<int32_t>(vb::CLng(std::clamp(X - OldX, -1e9f, 1e9f)), 255);
    const int b = std::min<int32_t>(vb::CLng(BristleBleed * 2.55), 255);
    const Plane &ur = Before(UndoR, BufR), &ug = Before(UndoG, BufG), &ub = Before(UndoB, BufB);
    const kwline::RgbPlanes planes{BufR.data(), BufG.data(), BufB.data(), BufR.stride()};
    for (Bristle& br : Bristles) {
        const double r = (255.0 - s) * br.Radius / 255.0;
        const int16_t nx = Hold16(vb::CInt(std::clamp(std::sin(br.Angle * 0.0175) * r, -32768.0, 32767.0)) + X);
        const int16_t ny = Hold16(vb::CInt(std::clamp(std::cos(br.Angle * 0.0175) * r, -32768.0, 32767.0)) + Y);
        int c[3] = {R, G, B};
        if (br.X >= 0 && br.Y >= 0 && br.X < W && br.Y < H) {
            const int old[3] = {ur(br.X, br.Y), ug(br.X, br.Y), ub(br.X, br.Y)};
            for (int k = 0; k < 3; ++k) c[k] = (old[k] * b + c[k] * (255 - b)) / 255;
        }
        kwline::AALine(planes, br.X, br.Y, nx, ny, static_cast<uint8_t>(c[0]), static_cast<uint8_t>(c[1]),
                       static_cast<uint8_t>(c[2]), W, H);
        br.X = nx;
        br.Y = ny;
    }
    RedisplayWindow();
}
