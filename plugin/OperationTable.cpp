// The table of the automation class and the introspection data made from it.
// Arguments read "name:type", with "&" behind the type for one passed by
// reference. Types: i 32-bit, n 16-bit, y byte, d single float, s string,
// v variant, t a window (the X11 id of the caller's window).
#include <sstream>

#include "plugin/Calls.h"

namespace Automation {
namespace {
struct Row {
    const char* name;
    std::vector<const char*> args;
    const char* result;
    const char* doc;
    Handler run;
};

// In the class's order; the member ids follow from it.
const Row Table[] = {
    {"Kel_InsertFrame", {"Frame:i&"}, "", "Inserts a new frame at the specified frame.", Kel_InsertFrame},
    {"Kel_CreateAnim", {"Frames:i&"}, "", "Creates an anim with the specified number of frames", Kel_CreateAnim},
    {"Kel_GetFrame", {}, "", "Causes the current frame of the animation to be stored into the RGB buffers.", Kel_GetFrame},
    {"Kel_StoreFrame", {}, "", "Causes the RGB buffers to be stored into the current frame of the animation.",
     Kel_StoreFrame},
    {"Kel_GotoFrame", {"Frame:i&"}, "", "Goes to the specified frame", Kel_GotoFrame},
    {"Kel_DeleteFrame", {"Frame:i&"}, "", "Deletes the specified frame", Kel_DeleteFrame},
    {"Kel_GetTotalFrames", {}, "i",
     "Returns the total number of frames in an animation.  (Returns actual number of frames, not starting at 0)",
     Kel_GetTotalFrames},
    {"Kel_GetCurrentFrame", {}, "i", "Returns the current frame number in the animation (frame numbers start at 0)",
     Kel_GetCurrentFrame},
    {"Kel_FreeAnim", {}, "", "Frees the current animation and its resources.", Kel_FreeAnim},
    {"Kel_GetWells", {}, "v", "Gets an array in a variant containing every well entry.", Kel_GetWells},
    {"Kel_SetWells", {"NewWells:v&"}, "", "sets kelpwicks well colors using a variant array", Kel_SetWells},
    {"Kel_SetGradient", {"NewGradient:v&", "Index:n&"}, "", "copies an array to the gradient of index.",
     Kel_SetGradient},
    {"Kel_SetMousePointer", {"PointerNumer:n"}, "n",
     "Sets the mouse pointer to one of several predifined images such as the hourglass.  Returns the number of the  "
     "current pointer.",
     Kel_SetMousePointer},
    {"Kel_TileTextureMe", {"ThisObject:t&"}, "",
     "Applies kelpwicks tile texture pattern to the specified object.  Object must be a form or picturebox.",
     Kel_TileTextureMe},
    {"Kel_NewBrushFilename", {"Path:s&"}, "", "", Kel_NewBrushFilename},
    {"Kel_NewFilename", {"Path:s&"}, "", "Changes the internal pathname that kelpwick uses when saving a buffer",
     Kel_NewFilename},
    {"Kel_RenameBuffer", {"Name:s&"}, "", "Changes the name of the buffer displayed in the windows title bar.",
     Kel_RenameBuffer},
    {"Kel_AlphaOff", {}, "", "Turns off the alpha channel", Kel_AlphaOff},
    {"Kel_AlphaOn", {}, "", "Turns on the alpha channel", Kel_AlphaOn},
    {"Kel_InitMarquee", {}, "", "Initializes the marquis with whatever's in the alpha channel", Kel_InitMarquee},
    {"Kel_ActivateCustomBrush", {}, "", "Activates the custom brush tool.", Kel_ActivateCustomBrush},
    {"Kel_CreateEmptyBrush", {"BrushWidth:v", "BrushHeight:v"}, "v",
     "Creates a new empty custom brush of the given size.  Returns -1 if could not be created.", Kel_CreateEmptyBrush},
    {"Kel_SetBrushABuffer", {"abuf:v&"}, "", "Sets the current working custom brushes alpha channel.",
     Kel_SetBrushABuffer},
    {"Kel_GetBrushABuffer", {}, "v", "Gets a copy of the current working custom brush alpha buffer.",
     Kel_GetBrushABuffer},
    {"Kel_GetBrushHeight", {}, "n", "Gets the height in pixels of the current working custom brush.",
     Kel_GetBrushHeight},
    {"Kel_GetBrushWidth", {}, "n", "Gets the width in pixels of the current working custom brush.", Kel_GetBrushWidth},
    {"Kel_SetBrushBBuffer", {"bbuf:v&"}, "", "", Kel_SetBrushBBuffer},
    {"Kel_SetBrushGBuffer", {"gbuf:v&"}, "", "", Kel_SetBrushGBuffer},
    {"Kel_SetBrushRBuffer", {"rbuf:v&"}, "", "", Kel_SetBrushRBuffer},
    {"Kel_GetBrushBBuffer", {}, "v", "Gets a copy of the working custom brush blue buffer", Kel_GetBrushBBuffer},
    {"Kel_GetBrushGBuffer", {}, "v", "Gets a copy of the working custom brush green buffer.", Kel_GetBrushGBuffer},
    {"Kel_GetBrushRBuffer", {}, "v", "Gets a copy of the working custom brush red buffer.", Kel_GetBrushRBuffer},
    {"Kel_GetGradientIndex", {}, "n", "", Kel_GetGradientIndex},
    {"Kel_GetGradient", {"Index:n&"}, "v",
     "Gets a copy of the gradient  There are 8 indexes  altogether.  Use Kel_GetGradientIndex to get the one "
     "currently selected by the user.",
     Kel_GetGradient},
    {"Kel_SaveUndo", {}, "", "Saves an undo", Kel_SaveUndo},
    {"Kel_SendFormObject", {"NewObject:t&", "showmode:n&"}, "", "", Kel_SendFormObject},
    {"Kel_ValueBox", {"Title:s&", "Min:n&", "max:n&"}, "n",
     "Prompts the user for a value within a specific range.  Result is the value or -1 if canel.", Kel_ValueBox},
    {"Kel_RequestFile_Save", {"Title:s&", "Filename:s&", "Pattern:s&"}, "s",
     "Displays a Save file requester.  Result is a filename or \"\"", Kel_RequestFile_Save},
    {"Kel_RequestFile_Open", {"Title:s&", "Filename:s&", "Pattern:s&"}, "s",
     "Displays an Open file requester.  Result is a filename or \"\"", Kel_RequestFile_Open},
    {"Kel_QuestionBox", {"message:v&"}, "n",
     "Prompts the user with a OK/Cancel requester.  Result is 1 for ok and 2 for cancel.", Kel_QuestionBox},
    {"Kel_MessageBox", {"message:v&"}, "", "Displays the supplied message to the user", Kel_MessageBox},
    {"Kel_SetSecondaryColor", {"r:y&", "g:y&", "b:y&"}, "",
     "Sets the secondary pen color that is used for drawing with the right mouse button.", Kel_SetSecondaryColor},
    {"Kel_SetPrimaryColor", {"r:y&", "g:y&", "b:y&"}, "",
     "Sets the primary pen color that is used for drawing with the left mouse button.", Kel_SetPrimaryColor},
    {"Kel_GetSecondaryColor", {}, "i",
     "Gets the secondar pen color that is used for drawing with t the right  mouse button.", Kel_GetSecondaryColor},
    {"Kel_GetPrimaryColor", {}, "i", "Gets the primary pen color that is used for drawing with the left mouse button.",
     Kel_GetPrimaryColor},
    {"Kel_NewBuffer", {"width:n&", "height:n&"}, "", "Creates a new kelpwick buffer (currently erasing the old one)",
     Kel_NewBuffer},
    {"Kel_SetProgress", {"progress:d&"}, "",
     "Sets a value to the visible progress bar on the plugin interface.  value is between 0 and 100.",
     Kel_SetProgress},
    {"Kel_Unlock", {}, "", "Unlocks the buffers for use by the user (if no other plugin still holds a lock)",
     Kel_Unlock},
    {"Kel_Lock", {}, "", "Locks the buffers to prevent them from being accessed you're using them.", Kel_Lock},
    {"Kel_SetABuffer", {"abuf:v&"}, "", "", Kel_SetABuffer},
    {"Kel_SetSwapBBuffer", {"jbbuf:v&"}, "", "", Kel_SetSwapBBuffer},
    {"Kel_SetSwapGBuffer", {"jgbuf:v&"}, "", "", Kel_SetSwapGBuffer},
    {"Kel_SetSwapRBuffer", {"jrbuf:v&"}, "", "", Kel_SetSwapRBuffer},
    {"Kel_GetSwapBBuffer", {}, "v", "Returns the Swap blue buffer in a variant", Kel_GetSwapBBuffer},
    {"Kel_GetSwapGBuffer", {}, "v", "Returns the Swap green buffer in a variant", Kel_GetSwapGBuffer},
    {"Kel_GetSwapRBuffer", {}, "v", "Returns the swap red buffer in a variant", Kel_GetSwapRBuffer},
    {"Kel_GetAlphabits", {}, "y", "Returns a value that indicates the activation state of the alpha channel",
     Kel_GetAlphabits},
    {"Kel_GetABuffer", {}, "v", "Gets a copy of the alpha channel in a variant", Kel_GetABuffer},
    {"Kel_SetBBuffer", {"bbuf:v&"}, "", "Sets the blue buffer with the supplied array.", Kel_SetBBuffer},
    {"Kel_SetGBuffer", {"gbuf:v&"}, "", "Sets the green  buffer with the supplied array.", Kel_SetGBuffer},
    {"Kel_SetRbuffer", {"rbuf:v&"}, "", "Sets the red buffer with the supplied array.", Kel_SetRbuffer},
    {"Kel_GetBBuffer", {}, "v", "Gets a copy of the main green buffer in a variant", Kel_GetBBuffer},
    {"Kel_GetRBuffer", {}, "v", "Gets a copy of the main red buffer in a variant", Kel_GetRBuffer},
    {"Kel_GetGBuffer", {}, "v", "Gets a copy of the main green buffer in a variant", Kel_GetGBuffer},
    {"Kel_BufferHeight", {}, "n", "The hight of the main buffer in pixels", Kel_BufferHeight},
    {"Kel_BufferWidth", {}, "n", "The width of the main buffer in pixels", Kel_BufferWidth},
    {"Kel_GetRGB", {"x:n&", "y:n&"}, "i",
     "Returns the RGB  attributes of the specified pixel in long word format.", Kel_GetRGB},
    {"Kel_GetR", {"x:n&", "y:n&"}, "i", "Returns the red attribute of the specified pixel.", Kel_GetR},
    {"Kel_GetG", {"x:n&", "y:n&"}, "i", "returns the green attribute of the specified pixel.", Kel_GetG},
    {"Kel_GetB", {"x:n&", "y:n&"}, "i", "returns the blue attribute of the specified pixel.", Kel_GetB},
    {"Kel_SetRGB", {"x:n&", "y:n&", "r:y&", "g:y&", "b:y&"}, "",
     "Sets the specified pixel in the main buffers to the value r,g,b.", Kel_SetRGB},
    {"Kel_Refresh", {}, "", "Refreshes the display after you've made changes.", Kel_Refresh},
};

constexpr uint32_t FirstMemberId = 0x60030002;
// The two read-only properties take ids of their own outside the run.
uint32_t PropertyId(const std::string& name) { return name == "Kel_BufferWidth" ? 0x68030000 : 0x68030001; }
bool IsProperty(const std::string& name) { return name == "Kel_BufferWidth" || name == "Kel_BufferHeight"; }

Argument ParseArgument(const std::string& text) {
    const size_t colon = text.find(':');
    std::string type = text.substr(colon + 1);
    const bool byRef = !type.empty() && type.back() == '&';
    if (byRef) type.pop_back();
    return {text.substr(0, colon), type, byRef};
}

std::vector<Operation> Build() {
    std::vector<Operation> ops;
    uint32_t next = FirstMemberId;
    for (const Row& row : Table) {
        Operation op{row.name, {}, row.result, row.doc, 0, IsProperty(row.name), row.run};
        for (const char* a : row.args) op.args.push_back(ParseArgument(a));
        op.memberId = op.property ? PropertyId(op.name) : next++;
        ops.push_back(std::move(op));
    }
    return ops;
}

std::string Escape(const std::string& text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\'': out += "&apos;"; break;
        default: out += c;
        }
    }
    return out;
}

std::string Hex(uint32_t v) {
    std::ostringstream s;
    s << "0x" << std::hex << v;
    return s.str();
}

void Annotations(std::ostringstream& xml, const Operation& op, const char* indent) {
    xml << indent << "<annotation name=\"org.kelpwick.MemberId\" value=\"" << Hex(op.memberId) << "\"/>\n";
    if (!op.doc.empty())
        xml << indent << "<annotation name=\"org.freedesktop.DBus.Description\" value=\"" << Escape(op.doc)
            << "\"/>\n";
}

void MethodXml(std::ostringstream& xml, const Operation& op) {
    xml << "    <method name=\"" << op.name << "\">\n";
    Annotations(xml, op, "      ");
    for (const Argument& a : op.args)
        xml << "      <arg name=\"" << a.name << "\" type=\"" << a.type << "\" direction=\"in\"/>\n";
    if (!op.result.empty()) xml << "      <arg name=\"result\" type=\"" << op.result << "\" direction=\"out\"/>\n";
    for (const Argument& a : op.args)
        if (a.byReference)
            xml << "      <arg name=\"" << a.name << "\" type=\"" << a.type << "\" direction=\"out\"/>\n";
    xml << "    </method>\n";
}
}  // namespace

const std::vector<Operation>& Operations() {
    static const std::vector<Operation> ops = Build();
    return ops;
}

const Operation* FindOperation(const std::string& name) {
    for (const Operation& op : Operations())
        if (op.name == name) return &op;
    return nullptr;
}

std::string InSignature(const Operation& op) {
    std::string s;
    for (const Argument& a : op.args) s += a.type;
    return s;
}

std::string InterfaceXml() {
    std::ostringstream xml;
    xml << "  <interface name=\"" << Interface << "\">\n";
    for (const Operation& op : Operations()) {
        if (!op.property) {
            MethodXml(xml, op);
            continue;
        }
        xml << "    <property name=\"" << op.name << "\" type=\"" << op.result << "\" access=\"read\">\n";
        Annotations(xml, op, "      ");
        xml << "    </property>\n";
    }
    xml << "  </interface>\n";
    return xml.str();
}

}  // namespace Automation
