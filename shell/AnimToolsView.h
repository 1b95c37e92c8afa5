// The transport bar of the frame window, built from the frame's models.
#pragma once

class QMainWindow;
class QToolBar;

QToolBar* MakeAnimTools(QMainWindow* frame);
