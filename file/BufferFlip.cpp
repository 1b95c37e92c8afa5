// The Flip entries of the Buffer menu: the picture mirrored top to bottom or
// left to right. The selection stays where it is (the Alpha menu flips it).
#include "file/BufferFlip.h"

#include <algorithm>

#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/document/Undo.h"
#include "native/Flip.h"

namespace {
template <typename Kernel>
void FlipPlanes(Kernel kernel, bool withAlpha) {
    if (!DocumentExists()) return;
    for (Plane* p : {&BufR, &BufG, &BufB, &BufA}) {
        if (p == &BufA && !withAlpha) continue;
        int w = std::min(BufferWidth(), p->ubX()), h = std::min(BufferHeight(), p->ubY());
        kernel(p->data(), p->stride(), w, h);
    }
}
}  // namespace

void FlipBufferVertical(bool withAlpha) { FlipPlanes(kwflip::FlipRows, withAlpha); }

void vertical_Click() {
    if (!DocumentExists()) return;
    SaveUndo();
    FlipBufferVertical(false);
    RedisplayWindow();
}

void horizontal_Click() {
    if (!DocumentExists()) return;
    SaveUndo();
    FlipPlanes(kwflip::FlipColumns, false);
    RedisplayWindow();
}
