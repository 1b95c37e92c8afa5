// The frame's menu entries whose commands live in the render folder; the
// entries themselves stand in the frame's menu table, in display order.
#pragma once

#include "core/framework/controls.h"

namespace MDIForm1 {
extern MenuEntry Noise, AddValueNoise, AddNoise;
extern MenuEntry menuTransform, TransformMeshwarp, Combine_Znoise;
extern MenuEntry Render, Plasma, BumpyToy, Render_Sky;
}  // namespace MDIForm1
