// The generic panel view: builds any form's window from its control models in
// declaration order, and keeps widgets and models in step both ways.
#pragma once

#include <QEventLoop>
#include <QPointer>
#include <QWidget>

struct Form;
class Control;

class PanelView : public QWidget {
public:
    PanelView(Form& form, QWidget* parent);
    ~PanelView() override;
    Form& form() { return form_; }
    // The widget of one control: a hand-written one registered for it (which may
    // be nullptr when another widget draws the control), or the generic one.
    QWidget* buildControl(Control& c, bool allowCustom = true);
    // Set while the panel is shown modally: hiding the form ends the loop.
    QPointer<QEventLoop> modalLoop;

protected:
    void paintEvent(QPaintEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void changeEvent(QEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    void applyForm();
    Form& form_;
};

// A widget showing a colour swatch, for shape models.
QWidget* MakeSwatch(Control& c, QWidget* parent);
// The patterned background every panel shares.
void PaintPanelBackground(QWidget* w, Form& form);
// Colours a widget from its control's BackColor and ForeColor.
void ApplyControlColours(QWidget* w, Control& c);
