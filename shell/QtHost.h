// The Host of the real program: forms become Qt windows, dialogs are Qt's own.
#pragma once

#include <QPointer>
#include <QWidget>
#include <map>

#include "core/framework/Host.h"

class MainWindow;
class PanelView;

class QtHost : public Host {
public:
    explicit QtHost(MainWindow* main);
    void ShowForm(Form& f, bool modal, Form* owner) override;
    void HideForm(Form& f) override;
    void UnloadForm(Form& f) override;
    void DoEvents() override;
    void Beep() override;
    CanvasSurface GetCanvasSurface() override;
    void SetCanvasWindowSize(int width, int height) override;
    void CanvasImageChanged(int left, int top, int right, int bottom) override;
    bool CanvasIsActive() override;
    std::optional<std::string> OpenFileDialog(FileDialogSpec& dialog) override;
    std::optional<std::string> SaveFileDialog(FileDialogSpec& dialog) override;
    std::optional<uint32_t> ChooseColor(uint32_t initial) override;
    bool OpenDocument(const std::string& path) override;
    double Clock() override;
    void PopupMenu(MenuEntry& menu) override;

    PanelView* panelFor(Form& f);  // made on first use

private:
    MainWindow* main_;
    std::map<Form*, QPointer<PanelView>> panels_;
};

// Filters of the classic dialogs ("Desc|*.a;*.b|...") in Qt's form.
QString QtFilterOf(const std::string& filter, int index, QString* selected);
