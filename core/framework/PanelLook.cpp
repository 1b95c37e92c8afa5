// The look every panel shares: one colour scheme and a woven background tile.
#include "core/framework/PanelLook.h"

#include <algorithm>
#include <list>

#include "core/framework/vb.h"

const PatternTile& Draw_Pattern(Form& panel) {
    // One tile per background colour: a soft woven check, two shades either side
    // of the panel colour, so every panel shares the same texture.
    static std::list<std::pair<uint32_t, PatternTile>> cache;  // references stay valid
    uint32_t bg = panel.BackColor;
    for (auto& [c, t] : cache)
        if (c == bg) return t;
    PatternTile t;
    t.size = 8;
    t.pixels.resize(64);
    auto shade = [](uint32_t c, int d) {
        auto ch = [&](int v) { return static_cast<uint32_t>(std::clamp(v + d, 0, 255)); };
        return ch(vb::RedOf(c)) | ch(vb::GreenOf(c)) << 8 | ch(vb::BlueOf(c)) << 16;
    };
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) {
            int d = ((x + y) % 4 == 0) ? 10 : ((x - y + 8) % 4 == 0 ? -8 : 0);
            t.pixels[static_cast<size_t>(y * 8 + x)] = shade(bg, d);
        }
    cache.emplace_back(bg, std::move(t));
    return cache.back().second;
}

void PrefsCallBack(Form& panel) {
    constexpr uint32_t background = 10524816, sliderBody = 6706517, text = 8974079;
    panel.BackColor = background;
    for (Control* c : panel.controls) {
        switch (c->Kind) {
            case ControlKind::Slider:
            case ControlKind::CommandButton:
                c->BackColor = sliderBody;
                c->ForeColor = text;
                break;
            case ControlKind::Label:
            case ControlKind::CheckBox:
            case ControlKind::OptionButton:
            case ControlKind::Frame:
                c->BackColor = background;
                break;
            default:
                break;  // not every control has every property
        }
    }
}
