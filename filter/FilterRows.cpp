// The filter folder's rows: its entries of the Filter menu.
#include "filter/FilterRows.h"

#include "core/frame/MDIForm1.h"
#include "filter/FadeLast.h"

Rows FilterRows() {
    Rows rows;
    rows.menus = {{&MDIForm1::FadePrevious, FadePrevious_Click}};
    return rows;
}
