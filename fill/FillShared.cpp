// The helpers the fill commands share.
#include "fill/FillShared.h"

#include "colour/Gradients.h"
#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"

FillArea FillSize() {
    return {PictureWidth({&BufR, &BufG, &BufB, &BufA}), PictureHeight({&BufR, &BufG, &BufB, &BufA})};
}

kwlinear::Planes MainPlanes() {
    kwlinear::Planes p;
    p.r = BufR.data(), p.g = BufG.data(), p.b = BufB.data(), p.a = BufA.data();
    p.stride = BufR.stride();
    p.alphaOff = App.AlphaOff;
    return p;
}

kwlinear::GradientSteps SelectedGradient() {
    const int g = App.GradientIndex & 7;
    return {GradientData[g][0], GradientData[g][1], GradientData[g][2], GradientData[g][3]};
}

void ShowFillSelection() {
    SetAlphaOn(true);
    App.MarqueeWasOn = 255;
    InitMarquee();
    RedisplayWindow();
}
