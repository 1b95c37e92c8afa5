// The fill folder's rows: the paint fills of the Buffer menu and
// "Map to current gradient" of Filter > Color.
#include "fill/FillRows.h"

#include "fill/FillMenus.h"
#include "fill/MapGradient.h"
#include "fill/PaintFill.h"
#include "filter/KeptFilter.h"

Rows FillRows() {
    Rows rows;
    rows.menus = {{&MDIForm1::Buffer_Paint, Buffer_Paint_Click},
                  {&MDIForm1::Buffer_Adjustablepaint, Buffer_Adjustablepaint_Click}};
    // Mapping to the gradient is a filter the frames of an animation can repeat.
    for (MenuRow& r : RememberedFilters({{&MDIForm1::MapGradient, MapGradient_Click}})) rows.menus.push_back(r);
    return rows;
}
