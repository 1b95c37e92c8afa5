// The handlers of the operation table, one group per file, and the helpers
// they share for reading arguments that the dispatch has already type-checked.
#pragma once

#include <QDBusVariant>
#include <QVariant>
#include <string>

#include "plugin/Operations.h"

namespace Automation {

inline int16_t ArgInt16(const Call& c, int i) { return c.args[i].value<short>(); }
inline int32_t ArgInt32(const Call& c, int i) { return c.args[i].value<int>(); }
inline uint8_t ArgByte(const Call& c, int i) { return c.args[i].value<uchar>(); }
inline std::string ArgString(const Call& c, int i) { return c.args[i].toString().toStdString(); }
inline QVariant ArgVariant(const Call& c, int i) { return c.args[i].value<QDBusVariant>().variant(); }
inline QVariant Variant(const QVariant& v) { return QVariant::fromValue(QDBusVariant(v)); }
[[noreturn]] inline void Refuse(std::string message) { throw Refusal{InvalidArgs, std::move(message)}; }
// A pixel of the picture, 0..W-1 by 0..H-1; refused outside it.
void CheckPixel(int x, int y);

// Buffers, pixels, alpha, undo and display.
QVariant Kel_GetRBuffer(Call&);
QVariant Kel_GetGBuffer(Call&);
QVariant Kel_GetBBuffer(Call&);
QVariant Kel_GetABuffer(Call&);
QVariant Kel_GetSwapRBuffer(Call&);
QVariant Kel_GetSwapGBuffer(Call&);
QVariant Kel_GetSwapBBuffer(Call&);
QVariant Kel_SetRbuffer(Call&);
QVariant Kel_SetGBuffer(Call&);
QVariant Kel_SetBBuffer(Call&);
QVariant Kel_SetABuffer(Call&);
QVariant Kel_SetSwapRBuffer(Call&);
QVariant Kel_SetSwapGBuffer(Call&);
QVariant Kel_SetSwapBBuffer(Call&);
QVariant Kel_GetRGB(Call&);
QVariant Kel_GetR(Call&);
QVariant Kel_GetG(Call&);
QVariant Kel_GetB(Call&);
QVariant Kel_SetRGB(Call&);
QVariant Kel_BufferWidth(Call&);
QVariant Kel_BufferHeight(Call&);
QVariant Kel_GetAlphabits(Call&);
QVariant Kel_AlphaOff(Call&);
QVariant Kel_AlphaOn(Call&);
QVariant Kel_InitMarquee(Call&);
QVariant Kel_SaveUndo(Call&);
QVariant Kel_Refresh(Call&);
QVariant Kel_NewBuffer(Call&);
QVariant Kel_NewFilename(Call&);
QVariant Kel_RenameBuffer(Call&);
QVariant Kel_SetMousePointer(Call&);

// The custom brush.
QVariant Kel_ActivateCustomBrush(Call&);
QVariant Kel_CreateEmptyBrush(Call&);
QVariant Kel_GetBrushWidth(Call&);
QVariant Kel_GetBrushHeight(Call&);
QVariant Kel_GetBrushRBuffer(Call&);
QVariant Kel_GetBrushGBuffer(Call&);
QVariant Kel_GetBrushBBuffer(Call&);
QVariant Kel_GetBrushABuffer(Call&);
QVariant Kel_SetBrushRBuffer(Call&);
QVariant Kel_SetBrushGBuffer(Call&);
QVariant Kel_SetBrushBBuffer(Call&);
QVariant Kel_SetBrushABuffer(Call&);
QVariant Kel_NewBrushFilename(Call&);

// Colours, wells and gradients.
QVariant Kel_GetWells(Call&);
QVariant Kel_SetWells(Call&);
QVariant Kel_GetGradientIndex(Call&);
QVariant Kel_GetGradient(Call&);
QVariant Kel_SetGradient(Call&);
QVariant Kel_SetPrimaryColor(Call&);
QVariant Kel_SetSecondaryColor(Call&);
QVariant Kel_GetPrimaryColor(Call&);
QVariant Kel_GetSecondaryColor(Call&);

// Frames.
QVariant Kel_InsertFrame(Call&);
QVariant Kel_CreateAnim(Call&);
QVariant Kel_GetFrame(Call&);
QVariant Kel_StoreFrame(Call&);
QVariant Kel_GotoFrame(Call&);
QVariant Kel_DeleteFrame(Call&);
QVariant Kel_GetTotalFrames(Call&);
QVariant Kel_GetCurrentFrame(Call&);
QVariant Kel_FreeAnim(Call&);

// The user, the lock, progress and windows.
QVariant Kel_ValueBox(Call&);
QVariant Kel_QuestionBox(Call&);
QVariant Kel_MessageBox(Call&);
QVariant Kel_RequestFile_Save(Call&);
QVariant Kel_RequestFile_Open(Call&);
QVariant Kel_SetProgress(Call&);
QVariant Kel_Lock(Call&);
QVariant Kel_Unlock(Call&);
QVariant Kel_TileTextureMe(Call&);
QVariant Kel_SendFormObject(Call&);

}  // namespace Automation
