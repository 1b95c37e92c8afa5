// Map to current gradient, a direct filter: one undo step, the busy pointer,
// the mapping through alpha, the redisplay.
#include "fill/MapGradient.h"

#include "core/document/Buffers.h"
#include "fill/FillShared.h"
#include "filter/FilterFrame.h"
#include "native/LinearFill.h"

void MapToGradient() {
    const FillArea area = FillSize();
    if (!DocumentExists() || area.empty()) return;
    filterSetup();
    {
        Hourglass busy;
        kwlinear::MapToGradient(MainPlanes(), area.W, area.H, SelectedGradient());
    }
    filterCloseDown();
}

void MapGradient_Click() { MapToGradient(); }
