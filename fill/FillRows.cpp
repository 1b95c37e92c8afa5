// The fill folder's rows: the paint fills (w, e) of the Buffer menu and
// "Map to current gradient" of Filter > Color.
#include "fill/FillRows.h"

#include "fill/FillMenus.h"
#include "fill/MapGradient.h"
#include "fill/PaintFill.h"

Rows FillRows() {
    Rows rows;
    rows.menus = {{&MDIForm1::Buffer_Paint, Buffer_Paint_Click},
                  {&MDIForm1::Buffer_Adjustablepaint, Buffer_Adjustablepaint_Click},
                  {&MDIForm1::MapGradient, MapGradient_Click}};
    rows.keys = {OnPress('w', Buffer_Paint_Click), OnPress('e', Buffer_Adjustablepaint_Click)};
    return rows;
}
