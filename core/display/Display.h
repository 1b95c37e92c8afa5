// The display pipeline: the screen image of the visible part of the canvas,
// full and partial conversion, zoom, marquee and the window title.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/framework/Hook.h"
#include "core/framework/Host.h"

struct ScreenBitmapInfo {
    int Width = 0, Height = 0, WidthBytes = 0, BitsPixel = 32;
    int OriginX = 0, OriginY = 0;
};

extern ScreenBitmapInfo ScreenBitmap;
extern int16_t DisplayBits;
extern std::vector<uint32_t> RefreshBuff32;  // rows of RefreshStride32 pixels
extern std::vector<uint16_t> RefreshBuff16;
extern int RefreshStride32, RefreshRows32;  // bounds of RefreshBuff32 (0..stride-1, 0..rows-1)
extern int RefreshStride16, RefreshRows16;
extern uint8_t DisplayBroken, BlitOnly;
extern int16_t MarqueePhase, MarqueeDelay;

void DemensionRefreshBuff();
// Converts the visible part of the picture and shows it, then raises DisplayRedrawn.
void RedisplayWindow();
// The whole picture was shown anew: the tool panel's preview, the info box and
// the frame's title follow it.
extern Hook<> DisplayRedrawn;
// Listens to undo and redo: the marquee outlines the restored alpha, and the
// restored picture is shown.
void ShowRestoredPicture(bool alphaOn);
void ResizeWindow();
// The zoom changed other than through the zoom panel's slider (a new document
// starts at 100 %, the wheel zooms): the zoom controls follow.
extern Hook<> ZoomFollowed;
// Zooms to `percent` about a point of the view: (vx, vy) is a position in the
// visible part, and the picture point under it stays under it.
void ZoomAbout(int percent, double vx, double vy);
void Refresh_Click();
void InitMarquee();
void DisplayMarquee();
// Converts and shows one rectangle of the picture, in buffer pixels (right and
// bottom exclusive): the route a stroke takes for its dirty rectangle.
void RefreshRect(int left, int top, int right, int bottom);
// What the frame's menus chose for the display: the mixing table of layer
// mixing (nullptr when off) and the 15-bit route on 16-bit surfaces.
struct DisplayChoices {
    const uint8_t* mixTable = nullptr;
    bool force15 = false;
};
extern DisplayChoices Choices;

// Which kwpaint route a redisplay takes, by surface depth and zoom.
enum class RefreshRoute { Fast32, FastMix32, Zoom32, Zoom24, Fast16, FastMix16, Zoom16, Zoom15 };
RefreshRoute ChooseRefreshRoute(int bits, int zoom, bool mixing, bool force15);
