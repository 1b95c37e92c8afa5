// Host installation, form show/hide, and the guard around event procedures.
#include "core/framework/Host.h"

#include "core/framework/controls.h"

namespace {
Host* current = nullptr;
}

Host& host() { return *current; }
void SetHost(Host* h) { current = h; }

void Show(Form& f, bool modal, Form* owner) {
    if (!f.Loaded) {
        f.Loaded = true;
        if (f.Load) f.Load();
    }
    f.Visible = true;
    f.Modal = modal;
    host().ShowForm(f, modal, owner);
}

void Hide(Form& f) {
    f.Visible = false;
    host().HideForm(f);
}

void Unload(Form& f) {
    if (!f.Loaded && !f.Visible) return;
    if (f.Unload) f.Unload();
    f.Visible = false;
    f.Loaded = false;
    host().UnloadForm(f);
}
