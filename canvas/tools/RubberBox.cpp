// The rubber box of the rectangle, ellipse and selection tools: placed at the
// press, stretched by the held button, hidden at the release, when the
// crosshair comes back.
#include "canvas/CanvasState.h"
#include "canvas/tools/Tools.h"
#include "core/display/Form1.h"
#include "core/framework/Codes.h"

#include <cmath>

namespace canvastool {
void StartRubberBox(float X, float Y, bool oval) {
    Form1::Line1.Visible = false;
    Form1::Line2.Visible = false;
    Form1::Shape1.Tag = oval ? Form1::OvalTag : "";
    Form1::Shape1.Left = Round16(X);
    Form1::Shape1.Top = Round16(Y);
    Form1::Shape1.Width = 0;
    Form1::Shape1.Height = 0;
    Form1::Shape1.Visible = true;
    DragStartX = X;
    DragStartY = Y;
}

void StretchRubberBox(int16_t Button, float X, float Y, bool fromCentre) {
    if (Button != MouseButton::Left && Button != MouseButton::Right) return;
    const float dx = std::fabs(X - DragStartX), dy = std::fabs(Y - DragStartY);
    if (fromCentre) {
        Form1::Shape1.Left = Round16(DragStartX - dx);
        Form1::Shape1.Top = Round16(DragStartY - dy);
        Form1::Shape1.Width = Round16(2 * dx);
        Form1::Shape1.Height = Round16(2 * dy);
    } else {
        Form1::Shape1.Left = Round16(std::fmin(DragStartX, X));
        Form1::Shape1.Top = Round16(std::fmin(DragStartY, Y));
        Form1::Shape1.Width = Round16(dx);
        Form1::Shape1.Height = Round16(dy);
    }
}

void EndRubberBox(float X, float Y) {
    Form1::Shape1.Visible = false;
    // The crosshair comes back through the release, where the cursor is.
    Form1::Line1.Y1 = Form1::Line1.Y2 = static_cast<float>(Round16(Y));
    Form1::Line2.X1 = Form1::Line2.X2 = static_cast<float>(Round16(X));
    Form1::Line1.Visible = true;
    Form1::Line2.Visible = true;
}
}  // namespace canvastool
