// The seven start-up settings of the frame: the undo budget, the refresh
// choices, the backdrop colour and picture.
#pragma once

// Reads the seven keys in their order at start-up.
void ReadStartupSettings();
void Prefs_Save_Click();
