// Every key of the program in one table: what is pressed, what it does, and the
// command it runs, in the order the keys are tested. The keyboard reference is
// written from the same table, so the two cannot disagree.
#pragma once

#include <string>
#include <vector>

#include "core/framework/Commands.h"

struct KeyLine {
    const char* group;  // the heading of the reference
    const char* keys;   // as the reference shows them: "u, ctrl z"
    const char* what;
    std::vector<KeyRow> rows;
};

const std::vector<KeyLine>& KeyTable();
Rows KeyRows();
// The keyboard shortcut reference, grouped by heading.
std::string KeyReference();
