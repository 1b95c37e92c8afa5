// The file folder's rows: opening, saving and flipping the buffer.
#include "file/FileRows.h"

#include "core/frame/MDIForm1.h"
#include "file/BufferFlip.h"
#include "file/FileMenu.h"

Rows FileRows() {
    Rows rows;
    rows.menus = {{&MDIForm1::Open, Open_Click},
                  {&MDIForm1::Save, Save_Click},
                  {&MDIForm1::horizontal, horizontal_Click},
                  {&MDIForm1::vertical, vertical_Click}};
    return rows;
}
