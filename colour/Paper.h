// The paper every painting tool can feel: the six stock pictures, the current
// paper's height plane PaperB and slope plane PaperF, and the panel state.
#pragma once

#include <cstdint>
#include <vector>

#include "core/framework/Plane.h"

extern Plane PaperB;         // grey height, 0..PaperWidth by 0..PaperHeight
extern Grid<float> PaperF;   // signed diagonal slope, same bounds
extern int16_t PaperWidth, PaperHeight;
extern int16_t DrybrushOn, BumpinessOn, NegativeOn;  // Form2 Check2, Check1, Check3
extern float PaperStrength;  // HScroll6 / 255
extern uint8_t PaperHold;    // 1 while a preset applies: the planes are built once, at its end

constexpr int StockPaperSide = 160;
constexpr int StockPaperCount = 6;
// A stock paper: StockPaperSide squared grey bytes, row after row, tileable.
std::vector<uint8_t> MakeStockPaper(int index);

void RefreshPaperBuff();
// True when both paper planes are built and cover the paper size: loops may read them.
bool PaperUsable();
void ClearPaperBorderStyles();
// Picks stock paper 1..6 as Image1_Click .. Image6_Click do.
void PickStockPaper(int number);
// Puts a grey picture into Picture8 (0x00BBGGRR pixels).
void SetPaperPicture(const std::vector<uint8_t>& grey, int width, int height);
// Reads the check boxes and strength of the tool panel into the paper fields.
void ReadPaperState();

namespace Form2 {
void Check1_Click();
void Check2_Click();
void Check3_Click();
void HScroll6_Change();
void Image1_Click();
void Image2_Click();
void Image3_Click();
void Image4_Click();
void Image5_Click();
void Image6_Click();
}  // namespace Form2
