// The small commands of the Window menu.
#include "core/frame/WindowMenu.h"

#include "core/frame/Form2.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/AppState.h"
#include "core/framework/Host.h"

void toolbar_Click() { Show(Form2::form, false, &MDIForm1::form); }

void Window_Info_Click() {
    MDIForm1::Window_Info.Checked = !MDIForm1::Window_Info.Checked;
    Form2::Info1.Visible = MDIForm1::Window_Info.Checked.get();
}

// The way out when a plug-in died holding the lock: a toggle between 0 and -1,
// so that a second pick undoes the first rather than counting further down.
void UnlockInput_Click() { App.LockCount = App.LockCount == 0 ? -1 : 0; }
