// The gradient store and the ways a gradient is made: from entries, linear or
// along a curve, by sweeping a channel, by reversing and smoothing.
#include "colour/Gradients.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <vector>

#include "core/framework/vb.h"
#include "native/Spline.h"

uint8_t GradientData[GradientCount][GradientChannels][GradientSteps];
int32_t GradEntries[GradientCount][GradientSteps];
uint8_t GradEntryRow = 0;

int ChannelMaskOfTab(int tab) {
    switch (tab) {
        case 0: return ChanRed;
        case 1: return ChanGreen;
        case 2: return ChanBlue;
        case 3: return ChanOpacity;
        default: return ChanRGB;
    }
}

namespace {
void Ramp(int g, uint32_t from, uint32_t to) {
    for (int s = 0; s < GradientSteps; ++s) {
        double f = s / 255.0;
        Grad(s, 0, g) = vb::CByte(vb::RedOf(from) * (1 - f) + vb::RedOf(to) * f);
        Grad(s, 1, g) = vb::CByte(vb::GreenOf(from) * (1 - f) + vb::GreenOf(to) * f);
        Grad(s, 2, g) = vb::CByte(vb::BlueOf(from) * (1 - f) + vb::BlueOf(to) * f);
        Grad(s, 3, g) = 255;
    }
}
}  // namespace

void InitGradientData() {
    Ramp(0, 0x000000, 0xFFFFFF);
    Ramp(1, 0x000000, 0x0000FF);
    Ramp(2, 0x000000, 0x00FF00);
    Ramp(3, 0x000000, 0xFF0000);
    Ramp(4, 0xFFFFFF, 0x000000);
    // A hue circle: red, yellow, green, cyan, blue, magenta and back to red.
    for (int s = 0; s < GradientSteps; ++s) {
        double h = s * 6.0 / 256.0;
        int sector = static_cast<int>(h);
        double f = h - sector;
        double up = 255 * f, down = 255 * (1 - f);
        double rgb[6][3] = {{255, up, 0}, {down, 255, 0}, {0, 255, up}, {0, down, 255}, {up, 0, 255}, {255, 0, down}};
        for (int c = 0; c < 3; ++c) Grad(s, c, 5) = vb::CByte(rgb[sector][c]);
        Grad(s, 3, 5) = 255;
    }
    Ramp(6, 0x000000, 0x00FFFF);
    // White fading out: the opacity channel at work.
    Ramp(7, 0xFFFFFF, 0xFFFFFF);
    for (int s = 0; s < GradientSteps; ++s) Grad(s, 3, 7) = static_cast<uint8_t>(255 - s);
    for (auto& row : GradEntries) std::fill(std::begin(row), std::end(row), -1);
}

bool ReadGradientFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::vector<char> bytes(GradientFileBytes, 0);
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::memcpy(GradientData, bytes.data(), GradientFileBytes);
    return true;
}

bool WriteGradientFile(const std::string& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(reinterpret_cast<const char*>(GradientData), static_cast<std::streamsize>(GradientFileBytes));
    return static_cast<bool>(out);
}

bool WriteColourMap(const std::string& path, int gradient) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(reinterpret_cast<const char*>(GradientData[gradient]), static_cast<std::streamsize>(ColourMapBytes));
    return static_cast<bool>(out);
}

void ApplyLinear(int g) {
    const int32_t* row = GradEntries[g];
    int prev = 0;
    uint32_t old = 0;  // the colour before the first entry is black
    bool first = true;
    for (;;) {
        // The first search may find an entry at 0; later ones look above the last.
        int p = first ? 0 : prev + 1;
        while (p <= 255 && row[p] < 0) ++p;
        if (p > 255) return;
        uint32_t now = static_cast<uint32_t>(row[p]);
        int span = p - prev;
        for (int j = prev; j <= p; ++j) {
            if (span == 0) {
                Grad(j, 0, g) = vb::RedOf(now);
                Grad(j, 1, g) = vb::GreenOf(now);
                Grad(j, 2, g) = vb::BlueOf(now);
                continue;
            }
            double f = static_cast<double>(j - prev) / span;
            Grad(j, 0, g) = static_cast<uint8_t>(vb::CInt(vb::RedOf(now) * f + vb::RedOf(old) * (1 - f)));
            Grad(j, 1, g) = static_cast<uint8_t>(vb::CInt(vb::GreenOf(now) * f + vb::GreenOf(old) * (1 - f)));
            Grad(j, 2, g) = static_cast<uint8_t>(vb::CInt(vb::BlueOf(now) * f + vb::BlueOf(old) * (1 - f)));
        }
        prev = p;
        old = now;
        first = false;
        if (p == 255) return;
    }
}

void ApplyCubic(int g) {
    float red[GradientSteps], green[GradientSteps], blue[GradientSteps], dist[GradientSteps];
    int n = 0, last = 0;
    for (int p = 0; p < GradientSteps; ++p) {
        int32_t e = GradEntries[g][p];
        if (e < 0) continue;
        red[n] = vb::RedOf(static_cast<uint32_t>(e)) / 255.0f;
        green[n] = vb::GreenOf(static_cast<uint32_t>(e)) / 255.0f;
        blue[n] = vb::BlueOf(static_cast<uint32_t>(e)) / 255.0f;
        dist[n] = static_cast<float>(p - last);
        last = p;
        ++n;
    }
    float s = 0, w = 0;
    auto store = [](float v) { return vb::CByte(std::clamp(v, 0.0f, 1.0f) * 255.0f); };
    for (int k = 0; k < n; ++k) {
        s = static_cast<float>(vb::CInt(s + w));
        w = dist[k];
        for (int j = 0; j <= w; ++j) {
            int step = static_cast<int>(s) + j;
            if (step > 255) break;
            float t = step / 255.0f;
            auto count = static_cast<int16_t>(n);
            Grad(step, 0, g) = store(kwfilter::spline(t, count, red));
            Grad(step, 1, g) = store(kwfilter::spline(t, count, green));
            Grad(step, 2, g) = store(kwfilter::spline(t, count, blue));
        }
    }
}

void ReverseGradient(int g) {
    for (int c = 0; c < GradientChannels; ++c) std::reverse(std::begin(GradientData[g][c]), std::end(GradientData[g][c]));
}

void SmoothGradient(int g, int mask) {
    for (int c = 0; c < GradientChannels; ++c) {
        if (!(mask & (1 << c))) continue;
        uint8_t copy[GradientSteps];
        std::memcpy(copy, GradientData[g][c], sizeof copy);
        for (int s = 0; s < GradientSteps; ++s) {
            int l = copy[std::max(s - 1, 0)], r = copy[std::min(s + 1, 255)];
            Grad(s, c, g) = vb::CByte((l + 2 * copy[s] + r) / 4.0);
        }
    }
}

void SweepGradient(int g, int mask, int fromStep, int fromValue, int toStep, int toValue) {
    fromStep = std::clamp(fromStep, 0, 255);
    toStep = std::clamp(toStep, 0, 255);
    fromValue = std::clamp(fromValue, 0, 255);
    toValue = std::clamp(toValue, 0, 255);
    int span = std::abs(toStep - fromStep);
    int dir = toStep >= fromStep ? 1 : -1;
    for (int i = 0; i <= span; ++i) {
        int step = fromStep + i * dir;
        double f = span == 0 ? 1.0 : static_cast<double>(i) / span;
        auto v = static_cast<uint8_t>(vb::CInt(fromValue + (toValue - fromValue) * f));
        for (int c = 0; c < GradientChannels; ++c)
            if (mask & (1 << c)) Grad(step, c, g) = v;
    }
}
