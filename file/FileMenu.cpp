// Open and Save of the File menu: the dialogs, their questions, the load into
// the main buffer and the save from it, through the conversion service for
// every format other than Targa.
#include "file/FileMenu.h"

#include <filesystem>

#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/document/Buffers.h"
#include "core/display/Display.h"
#include "core/display/Form1.h"
#include "core/framework/Host.h"
#include "core/frame/MDIForm1.h"
#include "core/document/Undo.h"
#include "file/BufferFlip.h"
#include "file/Conversion.h"
#include "file/FileNames.h"
#include "file/TargaFile.h"
#include "file/TargaOptions.h"

std::string FileName;
std::function<bool()> FreeAnimationForLoad;

namespace {

const char* const OpenFilter = "Default Targa (*.tga)|*.tga|All supported files|*.*";
const char* const SaveFilter =
    "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpeg|*.jpg|Png|*.png|Psd|*.psd|Targa|*.tga|Tiff|*.tif";

// One dialog object serves both directions, so its filter index carries over.
FileDialogRequest CommonDialog1{"Open a file", OpenFilter, {}, {}, 1};

// The format word handed to the conversion, by save filter index. Indices 4 and 5
// cross the filter's labels (Png gives PSD, Psd gives PNG): kept that way on purpose.
std::string FormatWord(int index) {
    switch (index) {
    case 2: return "BMP";
    case 3: return "JPEG";
    case 4: return "PSD";
    case 5: return "PNG";
    case 6: return "TGA";
    case 7: return "TIF";
    default: return "";
    }
}

// The current directory, remembered by a file command and put back at its end.
struct DirectoryKeeper {
    std::filesystem::path dir;
    DirectoryKeeper() {
        std::error_code ec;
        dir = std::filesystem::current_path(ec);
    }
    void restore() const {
        std::error_code ec;
        if (!dir.empty()) std::filesystem::current_path(dir, ec);
    }
};

// Events run once with the canvas locked, so that plug-ins see the buffers as busy.
void PumpLocked() {
    ++App.LockCount;
    host().DoEvents();
    --App.LockCount;
}

// The closing steps of a load, taken also after a failure or a cancelled dialog.
void LoadExitSteps(const DirectoryKeeper& keeper) {
    keeper.restore();
    StatusProcessing();
    SaveUndo();
    RedisplayWindow();
    PumpLocked();
}

// A different size rebuilds the document (without asking; undo starts empty).
bool SizeBufferFor(int w, int h) {
    if (w == BufferWidth() && h == BufferHeight()) return true;
    SetBufferSize(w, h);
    if (!CreateNewDocument(false)) return false;
    DemensionRefreshBuff();
    return true;
}

// What follows the pixels: an upright turn, alpha by the pixel size, the caption.
// The turn comes first so that the marquee outlines the alpha as it will stand.
void FinishLoad(const TargaLoadResult& r, const std::string& displayName) {
    if (r.pixelsRead && TargaTopLeft(TargaHeader.ImageDescriptor)) FlipBufferVertical(r.bytesPerPixel == 4);
    if (r.pixelsRead && r.bytesPerPixel == 4) {
        InitMarquee();
        SetAlphaOn(true);
    } else {
        SetAlphaOn(false);
    }
    Form1::form.Caption = displayName;
}

// Reads FileName into the main buffer, a Targa directly or anything else through
// the conversion service (a real Targa too, when the user chose so). giveUp puts
// the old name back when nothing was read.
void LoadPicture(bool throughConversion, const DirectoryKeeper& keeper, const std::function<void()>& giveUp) {
    const std::string displayName = FileName;
    std::string readPath = FileName;
    if (throughConversion) {
        std::string temp = TempFile("TempTga.tga");
        if (ConvertToTarga(FileName, temp) != 0) {
            giveUp();  // nothing was read: the document keeps its name
            return keeper.restore();
        }
        readPath = temp;
        keeper.restore();
    }
    try {
        const int canvas = Form1::Loads();
        TargaLoadResult r = LoadTargaFile(readPath, {&BufR, &BufG, &BufB, &BufA}, SizeBufferFor);
        FileName = displayName;
        if (r.finished) FinishLoad(r, displayName);
        // A file refused before any pixel was read leaves the document and its name as they were.
        else if (!r.pixelsRead && canvas == Form1::Loads()) giveUp();
    } catch (const std::bad_alloc&) {
        FileName = displayName;
        Kelpwick_MsgBox("Not enough memory to load " + displayName + ".");
    }
    LoadExitSteps(keeper);
}

}  // namespace

void Open_Click() {
    DirectoryKeeper keeper;
    const std::string oldCaption = Form1::form.Caption;
    const std::string oldFileName = FileName;
    CommonDialog1.Title = "Open a file";
    CommonDialog1.Filter = OpenFilter;
    CommonDialog1.FileName = FileName;
    auto chosen = host().OpenFileDialog(CommonDialog1);
    if (!chosen) return LoadExitSteps(keeper);
    FileName = *chosen;
    auto giveUp = [&] {
        FileName = oldFileName;
        Form1::form.Caption = oldCaption;
    };
    const int index = CommonDialog1.FilterIndex;
    if (index == 1 && CheckforTGA(FileName) != 0 &&
        Kelpwick_QuestionBox("The file extention is not '.tga'.  Proceed only if you're sure this is a targa") != 1)
        return giveUp();
    if (CheckExtention(FileName) != 0 &&
        Kelpwick_QuestionBox("The file extention is unknown.  Try to load anyway?") != 1)
        return giveUp();
    if (FreeAnimationForLoad && !FreeAnimationForLoad()) return;
    if (Kelpwick_QuestionBox("This will replace the existing buffer.  Lose current changes?") != 1) return giveUp();

    LoadPicture(index >= 2, keeper, giveUp);
}

void OpenNamedFile(const std::string& path) {
    DirectoryKeeper keeper;
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        Kelpwick_MsgBox("Could not open " + path + ": there is no such file.");
        return;
    }
    if (FreeAnimationForLoad && !FreeAnimationForLoad()) return;
    auto giveUp = [oldFileName = FileName, oldCaption = Form1::form.Caption.get()] {
        FileName = oldFileName;
        Form1::form.Caption = oldCaption;
    };
    FileName = path;
    LoadPicture(CheckforTGA(path) != 0, keeper, giveUp);
}

void Save_Click() {
    if (Menus::MixSwapNone.Checked &&
        Kelpwick_QuestionBox("Layer mixing is active.  Only the current buffer will be saved.") != 1)
        return;
    DirectoryKeeper keeper;
    auto closing = [&] {
        StatusProcessing();
        keeper.restore();
        PumpLocked();
    };
    CommonDialog1.Title = "Save a file";
    CommonDialog1.Filter = SaveFilter;
    CommonDialog1.FileName = FileName;
    auto chosen = host().SaveFileDialog(CommonDialog1);
    CommonDialog1.Title = "Open a file";
    CommonDialog1.Filter = OpenFilter;
    if (!chosen) return closing();
    const int index = CommonDialog1.FilterIndex;
    std::string writePath = *chosen;
    if (index == 1) {
        Show(TargaOptions::form, true);
        if (TargaCancelled == 1) return closing();
    } else {
        TargaSaveType = 2;
        FinishPendingConversions();  // the last export may still be reading the temporary
        writePath = TempFile("TempTGA.tga");
    }
    const std::string format = FormatWord(index);
    ShowStatus("Saving buffer...");
    const uint8_t flags = TargaSaveType == 2 ? 1 : TargaSaveType == 3 ? 2 : TargaSaveType == 4 ? 6 : 0;
    if (SaveTarga(writePath, flags)) {
        // The document takes the file's name once the file is there; an export is
        // known to be there when it ends, and only if the document is still this one.
        auto named = [path = *chosen, canvas = Form1::Loads()] {
            if (canvas != Form1::Loads()) return;
            FileName = path;
            Form1::form.Caption = path;
        };
        if (index > 1) ConvertFromTarga(*chosen, writePath, format, named);
        else named();
    }
    closing();
}
