// The small commands of the Window menu.
#pragma once

void toolbar_Click();
void Window_Info_Click();
void UnlockInput_Click();
