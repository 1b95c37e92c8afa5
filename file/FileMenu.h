// Open and Save of the File menu and the path they work on.
#pragma once

#include <functional>
#include <string>

extern std::string FileName;  // the picture path in use

void Open_Click();
void Save_Click();

// Opens path as Open does after its dialog and questions: for a file named on the
// command line, where nothing is there to lose yet.
void OpenNamedFile(const std::string& path);

// Frees the animation before a load, asking first; false when the user declined.
// Set by the animation folder; without it there is never an animation to free.
extern std::function<bool()> FreeAnimationForLoad;
