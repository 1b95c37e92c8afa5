// The operation table against the class's published order, and the
// introspection data made from it.
#include <gtest/gtest.h>

#include <QXmlStreamReader>
#include <string>
#include <vector>

#include "plugin/Operations.h"

using namespace Automation;

namespace {
// The class's operations in their published order.
const std::vector<std::string> ClassOrder = {
    "Kel_InsertFrame", "Kel_CreateAnim", "Kel_GetFrame", "Kel_StoreFrame", "Kel_GotoFrame", "Kel_DeleteFrame",
    "Kel_GetTotalFrames", "Kel_GetCurrentFrame", "Kel_FreeAnim", "Kel_GetWells", "Kel_SetWells", "Kel_SetGradient",
    "Kel_SetMousePointer", "Kel_TileTextureMe", "Kel_NewBrushFilename", "Kel_NewFilename", "Kel_RenameBuffer",
    "Kel_AlphaOff", "Kel_AlphaOn", "Kel_InitMarquee", "Kel_ActivateCustomBrush", "Kel_CreateEmptyBrush",
    "Kel_SetBrushABuffer", "Kel_GetBrushABuffer", "Kel_GetBrushHeight", "Kel_GetBrushWidth", "Kel_SetBrushBBuffer",
    "Kel_SetBrushGBuffer", "Kel_SetBrushRBuffer", "Kel_GetBrushBBuffer", "Kel_GetBrushGBuffer",
    "Kel_GetBrushRBuffer", "Kel_GetGradientIndex", "Kel_GetGradient", "Kel_SaveUndo", "Kel_SendFormObject",
    "Kel_ValueBox", "Kel_RequestFile_Save", "Kel_RequestFile_Open", "Kel_QuestionBox", "Kel_MessageBox",
    "Kel_SetSecondaryColor", "Kel_SetPrimaryColor", "Kel_GetSecondaryColor", "Kel_GetPrimaryColor", "Kel_NewBuffer",
    "Kel_SetProgress", "Kel_Unlock", "Kel_Lock", "Kel_SetABuffer", "Kel_SetSwapBBuffer", "Kel_SetSwapGBuffer",
    "Kel_SetSwapRBuffer", "Kel_GetSwapBBuffer", "Kel_GetSwapGBuffer", "Kel_GetSwapRBuffer", "Kel_GetAlphabits",
    "Kel_GetABuffer", "Kel_SetBBuffer", "Kel_SetGBuffer", "Kel_SetRbuffer", "Kel_GetBBuffer", "Kel_GetRBuffer",
    "Kel_GetGBuffer", "Kel_BufferHeight", "Kel_BufferWidth", "Kel_GetRGB", "Kel_GetR", "Kel_GetG", "Kel_GetB",
    "Kel_SetRGB", "Kel_Refresh"};
}  // namespace

TEST(OperationTable, KeepsTheClassOrderAndItsMemberIds) {
    const auto& ops = Operations();
    ASSERT_EQ(ops.size(), 72u);
    uint32_t expected = 0x60030002;
    for (size_t i = 0; i < ops.size(); ++i) {
        EXPECT_EQ(ops[i].name, ClassOrder[i]) << "at " << i;
        if (ops[i].name == "Kel_BufferWidth") EXPECT_EQ(ops[i].memberId, 0x68030000u);
        else if (ops[i].name == "Kel_BufferHeight") EXPECT_EQ(ops[i].memberId, 0x68030001u);
        else EXPECT_EQ(ops[i].memberId, expected++) << ops[i].name;
    }
    EXPECT_EQ(expected, 0x60030002u + 70);
    // Forms of arguments that the class fixes: only these three travel by value.
    for (const Operation& op : ops)
        for (const Argument& a : op.args) {
            const bool byValue = (op.name == "Kel_SetMousePointer") || (op.name == "Kel_CreateEmptyBrush");
            EXPECT_EQ(a.byReference, !byValue) << op.name << " " << a.name;
        }
    EXPECT_EQ(InSignature(*FindOperation("Kel_SetRGB")), "nnyyy");
    EXPECT_EQ(InSignature(*FindOperation("Kel_SetGradient")), "vn");
    EXPECT_EQ(FindOperation("Kel_Nothing"), nullptr);
}

// The XML is well formed, lists the members in table order, and carries each
// one's member id, its doc string (quotes and apostrophes escaped) and its out
// arguments: the result first, then every by-reference argument.
TEST(OperationTable, IntrospectionFollowsTheTable) {
    QXmlStreamReader xml(QString::fromStdString("<node>" + InterfaceXml() + "</node>"));
    std::vector<std::string> members, ids, outs;
    std::string docOfSave, docOfLock;
    std::string current, outList;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && (xml.name() == u"method" || xml.name() == u"property")) {
            current = xml.attributes().value("name").toString().toStdString();
            members.push_back(current);
            outList.clear();
        } else if (xml.isStartElement() && xml.name() == u"annotation") {
            const std::string name = xml.attributes().value("name").toString().toStdString();
            const std::string value = xml.attributes().value("value").toString().toStdString();
            if (name == "org.kelpwick.MemberId") ids.push_back(value);
            if (name == "org.freedesktop.DBus.Description" && current == "Kel_RequestFile_Save") docOfSave = value;
            if (name == "org.freedesktop.DBus.Description" && current == "Kel_Lock") docOfLock = value;
        } else if (xml.isStartElement() && xml.name() == u"arg" && xml.attributes().value("direction") == u"out") {
            outList += xml.attributes().value("name").toString().toStdString() + ",";
        } else if (xml.isEndElement() && xml.name() == u"method" && current == "Kel_ValueBox") {
            outs.push_back(outList);
        }
    }
    ASSERT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(members, ClassOrder);
    ASSERT_EQ(ids.size(), 72u);
    EXPECT_EQ(ids.front(), "0x60030002");
    EXPECT_EQ(ids[64], "0x68030001");  // Kel_BufferHeight
    EXPECT_EQ(ids[65], "0x68030000");  // Kel_BufferWidth
    EXPECT_EQ(ids.back(), "0x60030047");
    EXPECT_EQ(docOfSave, "Displays a Save file requester.  Result is a filename or \"\"");
    EXPECT_EQ(docOfLock, "Locks the buffers to prevent them from being accessed you're using them.");
    EXPECT_EQ(outs, std::vector<std::string>{"result,Title,Min,max,"});
}
