// The last filter the artist kept, so that it can run again on another picture
// (the frames of an animation) with the values it was kept with.
#pragma once

#include <string>
#include <vector>

#include "core/framework/Commands.h"

// Each row's command remembers the filter it starts: at once when the filter
// works without a panel, at the panel's Ok when it shows one (Cancel forgets it).
std::vector<MenuRow> RememberedFilters(std::vector<MenuRow> rows);
// A filter started otherwise than from a menu row (a filter plug-in chosen in
// its panel), kept as it starts; `start` runs it again.
void KeepFilter(const std::string& caption, Command start);
// True while the kept filter runs again: work that would end later (a plug-in's
// program) has to end before the run returns.
bool RerunningKeptFilter();
// The kept filter as the menus show it ("Adjust > Color"); empty when there is none.
std::string KeptFilterCaption();
// Runs the kept filter on the current picture with its panel unseen, pressing
// the panel's Ok, as one undo step. False when there is none.
bool RunKeptFilter();
void ForgetKeptFilter();
