// The frame's menu entries whose commands live in the fill folder: the paint
// fills of the Buffer menu and "Map to current gradient" of Filter > Color.
// The entries themselves stand in the frame's menu table, in display order.
#pragma once

#include "core/framework/controls.h"

namespace MDIForm1 {
extern MenuEntry Buffer_Paintstyle, Buffer_Paint, Buffer_Adjustablepaint;
extern MenuEntry MapGradient;
}  // namespace MDIForm1
