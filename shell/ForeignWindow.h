// Other programs' windows on the X display this program runs on, by their X
// window ids: painting a tile as a window's background, and keeping a window
// above all others. Each says false when the program is not on X11 or the id
// names no window.
#pragma once

#include <cstdint>

struct PatternTile;

bool PaintTileOnX11Window(uint64_t window, const PatternTile& tile);
// Maps the window, asks the window manager to keep it above the others (and,
// for show mode 1, to treat it as modal to `owner`) and raises it, without
// moving or sizing it.
bool RaiseX11WindowOnTop(uint64_t window, int showMode, uint64_t owner);
