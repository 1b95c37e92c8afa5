// The natural brush engine's state.
#include "brush/BrushState.h"

#include <cstring>

uint8_t BrushMask[kwbrush::MaskCells];
uint8_t BrushMaskXform[kwbrush::MaskCells];
uint8_t BrushMaskFine[kwbrush::FineSide * kwbrush::FineSide];
uint8_t DabMask[kwbrush::MaskCells];
uint8_t BrushPicture[kwbrush::MaskCells];

namespace {
struct BlankMasks {
    BlankMasks() {
        // Until a mask is built nothing paints.
        std::memset(BrushMask, 255, sizeof BrushMask);
        std::memset(BrushMaskXform, 255, sizeof BrushMaskXform);
        std::memset(DabMask, 255, sizeof DabMask);
        std::memset(BrushPicture, 255, sizeof BrushPicture);
    }
} blank;
}  // namespace

int16_t BrushRadius = 0, BrushStep = 0, StepCounter = 0;
int16_t LastX = 0, LastY = 0, CurX = 0, CurY = 0, PrevDabX = 0, PrevDabY = 0;
int32_t PaintR = 0, PaintG = 0, PaintB = 0;
int32_t DabR = 0, DabG = 0, DabB = 0;
int32_t PickR = 0, PickG = 0, PickB = 0;
int16_t BrushOpacity = 255;
kwmode::PaintMode BrushMode = kwmode::PaintMode::Default;
int16_t PantoX = 0, PantoY = 0, PatOrgX = 0, PatOrgY = 0;
uint8_t StrokeRefreshOff = 0, MarqueeAtDown = 0;
