// The commands of the Alpha menu.
#pragma once

void SelectAll_Click();
void ClearAlpha_Click();
void InvertAlpha_Click();
void AlphaEnable_Click();
// Listens to the document's alpha switch: the menu check and the marquee follow it.
void ShowAlphaState(bool on);
