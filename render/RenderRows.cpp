// The render folder's rows: the noise filters and the renders.
#include "render/RenderRows.h"

#include "filter/KeptFilter.h"
#include "render/MeshWarp.h"
#include "render/NoiseFilters.h"
#include "render/Plasma.h"
#include "render/RenderMenus.h"
#include "render/Sky.h"
#include "render/Znoise.h"

Rows RenderRows() {
    using namespace MDIForm1;
    Rows rows;
    // Every render and noise filter can be kept and repeated on the frames of an animation.
    rows.menus = RememberedFilters({{&AddValueNoise, AddValueNoise_Click},
                  {&AddNoise, AddNoise_Click},
                  {&Plasma, Plasma_Click},
                  {&BumpyToy, BumpyToy_Click},
                  {&Render_Sky, Render_Sky_Click},
                  {&TransformMeshwarp, TransformMeshwarp_Click},
                  {&Combine_Znoise, Combine_Znoise_Click}});
    return rows;
}
