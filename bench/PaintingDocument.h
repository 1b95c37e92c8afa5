// A painting document for the benchmarks: a scripted host drawing on a 1600 x
// 1000 surface, the mixing tables, a picture of the given size, every row
// installed, the stock papers and brushes.
#pragma once

#include "app/Startup.h"
#include "brush/Brush.h"
#include "colour/Colour.h"
#include "core/framework/MixTables.h"
#include "tests/support/ScriptedHost.h"

struct PaintingDocument {
    ScriptedHost host;
    PaintingDocument(int w, int h) {
        BuildMixTables(nullptr);
        host.surface = CanvasSurface{1600, 1000, 32, 0, 0};
        MakeTestDocument(w, h);
        Kelpwick::Compose();
        StartupPaper();
        StartupBrushes();
    }
};
