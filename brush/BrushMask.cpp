// Building and transforming the dab mask.
#include "brush/BrushMask.h"

#include <cstring>

#include "brush/BrushOptions.h"
#include "brush/BrushState.h"
#include "brush/CustomBrush.h"
#include "core/framework/AppState.h"
#include "core/frame/Form2.h"
#include "core/framework/vb.h"

void SetBrushPicture(const std::vector<uint8_t>& grey, int side) {
    std::memset(BrushPicture, 255, sizeof BrushPicture);
    for (int y = 0; y < side && y < kwbrush::MaskSide; ++y)
        for (int x = 0; x < side && x < kwbrush::MaskSide; ++x)
            BrushPicture[x + y * kwbrush::MaskSide] = grey[static_cast<size_t>(y * side + x)];
}

void Picture1_Paint() {
    using namespace kwbrush;
    const int size = Form2::HScroll5.Value;
    BrushRadius = vb::CInt(size / 4.0);
    if (App.CustomBrushOn == -1 && BrushExists()) {
        PaintBrushThumbnail(Form2::Picture1);  // the custom brush shows its own thumbnail
        return;
    }
    AntiAlias aa = AntiAlias::None;
    if (BrushOptions::Option2.Value) aa = AntiAlias::FiveTap;
    if (BrushOptions::Option3.Value) aa = AntiAlias::NineTap;
    static uint8_t work[WorkSide * WorkSide];
    BuildMask(BrushPicture, size, aa, BrushMask, work);
    // The picture shows the mask it made.
    PictureBox& p = Form2::Picture1;
    for (int y = 0; y < p.Height && y < MaskSide; ++y)
        for (int x = 0; x < p.Width && x < MaskSide; ++x) {
            uint8_t g = BrushMask[x + y * MaskSide];
            p.pixels[static_cast<size_t>(y * p.Width + x)] = vb::RGB(g, g, g);
        }
    p.Refresh();
}

void ScaleRotate(int32_t Angle, float Scale, int16_t Smooth) {
    kwbrush::ScaleRotate(BrushMask, Angle, Scale, Smooth, BrushMaskXform, BrushMaskFine);
}
