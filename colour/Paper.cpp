// The paper planes and the panel procedures that rebuild them.
#include "colour/Paper.h"

#include <cmath>
#include <cstdlib>

#include "core/display/Display.h"
#include "core/frame/Form2.h"
#include "core/framework/vb.h"

Plane PaperB;
Grid<float> PaperF;
int16_t PaperWidth = 0, PaperHeight = 0;
int16_t DrybrushOn = 0, BumpinessOn = 0, NegativeOn = 0;
float PaperStrength = 128.0f / 255.0f;
uint8_t PaperHold = 0;

namespace {
PictureBox* StockImage(int number) {
    PictureBox* images[] = {&Form2::Image1, &Form2::Image2, &Form2::Image3,
                            &Form2::Image4, &Form2::Image5, &Form2::Image6};
    return images[number - 1];
}

// The thumbnail of a stock paper: its top left corner at full size, so the grain shows,
// with a black frame when it is the chosen one.
void PaintStockImage(int number, bool chosen) {
    PictureBox& img = *StockImage(number);
    std::vector<uint8_t> grey = MakeStockPaper(number - 1);
    for (int y = 0; y < img.Height; ++y)
        for (int x = 0; x < img.Width; ++x) {
            uint8_t v = grey[static_cast<size_t>(y % StockPaperSide) * StockPaperSide + x % StockPaperSide];
            bool edge = x == 0 || y == 0 || x == img.Width - 1 || y == img.Height - 1;
            img.PSet(x, y, chosen && edge ? 0x000000 : vb::RGB(v, v, v));
        }
    img.Tag.assign(1, chosen ? '1' : '0');  // the border style
    img.Refresh();
}

double Wrap(double v, double n) { return v - vb::Int(v / n) * n; }
}  // namespace

void SetPaperPicture(const std::vector<uint8_t>& grey, int width, int height) {
    Form2::Picture8.Width = width;
    Form2::Picture8.Height = height;
    Form2::Picture8.pixels.resize(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (size_t i = 0; i < Form2::Picture8.pixels.size(); ++i) Form2::Picture8.pixels[i] = vb::RGB(grey[i], grey[i], grey[i]);
    Form2::Picture8.Refresh();
}

void RefreshPaperBuff() {
    if (PaperHold == 1) return;
    // The picture is taken as it stands: its size first, then one byte of each pixel.
    const PictureBox& pic = Form2::Picture8;
    int w = pic.Width, h = pic.Height;
    if (w <= 0 || h <= 0 || w > 32767 || h > 32767 || pic.pixels.size() < static_cast<size_t>(w) * h) return;
    Plane b = Plane::Make(w, h);
    Grid<float> f = Grid<float>::Make(w, h);
    for (int y = 0; y <= h; ++y)
        for (int x = 0; x <= w; ++x) {
            // The extra row and column repeat the picture, as reading past the edge wraps.
            uint32_t c = pic.pixels[static_cast<size_t>(y % h) * w + x % w];
            b(x, y) = vb::RedOf(c);
        }
    const int n = NegativeOn ? 255 : 0;
    for (int y = 0; y <= h; ++y)
        for (int x = 0; x <= w; ++x) {
            int ua = static_cast<int>(Wrap(x - 1, w)), va = static_cast<int>(Wrap(y - 1, h));
            int ub = static_cast<int>(Wrap(x + 1, w)), vb_ = static_cast<int>(Wrap(y + 1, h));
            int a = std::abs(n - b(ua, va)), bb = std::abs(n - b(ub, vb_));
            f(x, y) = static_cast<float>(a - bb) / 256.0f * PaperStrength;
        }
    PaperB = std::move(b);
    PaperF = std::move(f);
    PaperWidth = static_cast<int16_t>(w);
    PaperHeight = static_cast<int16_t>(h);
}

void ClearPaperBorderStyles() {
    for (int i = 1; i <= StockPaperCount; ++i)
        if (StockImage(i)->Tag != "0") PaintStockImage(i, false);
}

void PickStockPaper(int number) {
    if (number < 1 || number > StockPaperCount) return;
    SetPaperPicture(MakeStockPaper(number - 1), StockPaperSide, StockPaperSide);
    ClearPaperBorderStyles();
    PaintStockImage(number, true);
    RefreshPaperBuff();
}

void ReadPaperState() {
    BumpinessOn = static_cast<int16_t>(Form2::Check1.Value);
    DrybrushOn = static_cast<int16_t>(Form2::Check2.Value);
    NegativeOn = static_cast<int16_t>(Form2::Check3.Value);
    PaperStrength = static_cast<float>(Form2::HScroll6.Value) / 255.0f;
}

namespace Form2 {
void Check1_Click() {
    BumpinessOn = static_cast<int16_t>(Check1.Value);
    NegativeOn = static_cast<int16_t>(Check3.Value);
    PaperStrength = static_cast<float>(HScroll6.Value) / 255.0f;
    RefreshPaperBuff();
    RedisplayWindow();
}
void Check2_Click() {
    DrybrushOn = static_cast<int16_t>(Check2.Value);
    RefreshPaperBuff();
    RedisplayWindow();
}
void Check3_Click() {
    NegativeOn = static_cast<int16_t>(Check3.Value);
    RefreshPaperBuff();
}
void HScroll6_Change() {
    PaperStrength = static_cast<float>(HScroll6.Value) / 255.0f;
    RefreshPaperBuff();
}
void Image1_Click() { PickStockPaper(1); }
void Image2_Click() { PickStockPaper(2); }
void Image3_Click() { PickStockPaper(3); }
void Image4_Click() { PickStockPaper(4); }
void Image5_Click() { PickStockPaper(5); }
void Image6_Click() { PickStockPaper(6); }
}  // namespace Form2

bool PaperUsable() {
    return PaperWidth > 0 && PaperHeight > 0 && PaperB.ubX() >= PaperWidth - 1 && PaperB.ubY() >= PaperHeight - 1 &&
           PaperF.ubX() == PaperB.ubX() && PaperF.ubY() == PaperB.ubY();
}
