// The plug-in host: the panel "Execute plugin" that lists the program folder's
// plug-ins by family and starts them, the fixed commands that start a named
// companion program, the progress strip, and the input lock the plug-ins count.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "core/framework/controls.h"

extern int16_t PluginPanelOpen;  // 1 while the panel is up; progress draws only then
extern int16_t LastProgress;     // the last whole percentage shown

namespace Plugin_Options {
extern Form form;
extern ListBox TabBox;        // the five families, stacked; Tag holds the index in force
extern FileListBox File1;     // the plug-ins of the program folder in the family's pattern
extern PictureBox Picture1;   // the progress strip
extern Label Label1;          // the bus name plug-ins reach this program by
extern CommandButton Command1, Command2;

void TabBox_Click();
void Command1_Click();
void Command2_Click();
void File1_DblClick();
void Form_Unload();
}  // namespace Plugin_Options

// The file pattern of a family (tab 0..4): the name's suffix, without ".exe".
const char* FamilyPattern(int tab);
// Opens the panel on a tab, as the menu commands do.
void ShowPluginPanel(int tab);
// A program of the program folder started with its own name; false when it is
// not there or would not start.
bool StartPlugin(const std::string& name);
// A fixed command: SaveUndo when `undo`, then the program. A missing program is
// said in a message, and then no undo is taken.
void StartCompanion(const std::string& name, bool undo);

// Orange rows y1..y2 of the progress strip from x1 to x2.
void DrawBar(int x1, int y1, int x2, int y2);
// The colour of row y of the bar.
uint32_t BarRowColour(int y);
void SetPluginProgress(float progress);

// Locks as the callers took them, so that a caller that goes away without
// unlocking gives its locks back.
void TakeLock(const std::string& caller);
void ReleaseLock(const std::string& caller);
// The caller has gone: the locks it still held are released.
void CallerGone(const std::string& caller);
int LocksHeldBy(const std::string& caller);
// The process a caller runs in, as the bus knows it; when a plug-in this
// program started ends, the locks of its callers are given back even if their
// bus connection lives on in a process of theirs.
void CallerProcess(const std::string& caller, long pid);
void ProcessEnded(long pid);

// Waits up to 65535 ms for a program to end; true once it has.
bool WaitOnProgram(int ProcessID);

// The bus name of this program's automation class, and what the panel says of it.
void SetBusStatus(const std::string& text);
