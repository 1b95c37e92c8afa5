// Loading and saving the custom brush through the program's one Targa reader
// and writer. A load fills planes of its own and takes them on only when the
// file was whole, so a bad file leaves the current brush as it was.
#include <filesystem>
#include <new>

#include "brush/CustomBrush.h"
#include "core/document/Buffers.h"
#include "core/framework/AppState.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/frame/Form2.h"
#include "file/Conversion.h"
#include "file/TargaFile.h"

namespace {
const char* const BrushOpenFilter = "Default Targa (*.tga)|*.tga|All supported files|*.*";
const char* const BrushSaveFilter =
    "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpeg|*.jpg|Png|*.png|Psd|*.psd|Targa|*.tga|Tiff|*.tif";
FileDialogRequest BrushDialog{"Open a brush", BrushOpenFilter, {}, {}, 1};

struct LoadedBrush {
    Plane r, g, b, a;
    int w = 0, h = 0;
};

// The bytes an uncompressed file must hold for its pixels.
bool WholeFile(const std::string& path, const TargaFileHeader& h, int bytesPerPixel) {
    if (h.ImageType == 10) return true;  // the decoder itself says when packets run out
    std::error_code ec;
    const auto size = std::filesystem::file_size(path, ec);
    if (ec) return false;
    const long long map = h.ImageType == 1 ? static_cast<long long>(h.ColorMapLength) * 3 : 0;
    const long long need = static_cast<long long>(TargaHeaderSize) + h.IDLength + map +
                           static_cast<long long>(h.ImageWidth) * h.ImageHeight * bytesPerPixel;
    return static_cast<long long>(size) >= need;
}

// Reads the file into `into`; false (with a message) when it is no usable brush.
bool ReadBrushFile(const std::string& path, LoadedBrush& into) {
    auto prepare = [&](int w, int h) {
        if (w <= 0 || h <= 0) {
            Kelpwick_MsgBox("The brush file holds no picture.");
            return false;
        }
        if (w > BufferWidth() || h > BufferHeight()) {
            Kelpwick_MsgBox("The brush is larger than the picture.  The current brush is kept.");
            return false;
        }
        for (Plane* p : {&into.r, &into.g, &into.b, &into.a}) p->alloc(w, h);
        into.w = w, into.h = h;
        return true;
    };
    const TargaLoadResult r = LoadTargaFile(path, {&into.r, &into.g, &into.b, &into.a}, prepare);
    if (!r.finished) return false;  // refused with its own message
    if (!r.pixelsRead) {
        Kelpwick_MsgBox("This is not a Targa file the program reads: " + path);
        return false;
    }
    if (r.stoppedEarly || !WholeFile(path, TargaHeader, r.bytesPerPixel)) {
        Kelpwick_MsgBox("The brush file is damaged or cut short.  The current brush is kept.");
        return false;
    }
    if (r.bytesPerPixel < 4) into.a.fill(255);
    return true;
}

// The loaded planes become the brush, upright and with some coverage.
void TakeBrush(LoadedBrush& loaded) {
    int w = loaded.w, h = loaded.h;
    if (CreateEmptyBrush(w, h) != 0) return;
    BrushR.swap(loaded.r);
    BrushG.swap(loaded.g);
    BrushB.swap(loaded.b);
    BrushA.swap(loaded.a);
    if (TargaTopLeft(TargaHeader.ImageDescriptor)) FlipBrushRows();
    if (CheckBrushAlpha() == 0) BrushA.fill(255);
    App.CustomBrushOn = -1;
    Form2::Option1.Value = true;
    Form2::slider1.Value = 16;
    BrushChanged();
}
}  // namespace

void SetBrushFileName(const std::string& path) { BrushDialog.FileName = path; }

bool LoadBrushFile(const std::string& path) {
    try {
        LoadedBrush loaded;
        if (!ReadBrushFile(path, loaded)) return false;
        TakeBrush(loaded);
        return true;
    } catch (const std::bad_alloc&) {
        Kelpwick_MsgBox("Not enough memory to load the brush.");
        return false;
    }
}

bool SaveTargaBrush(const std::string& TargaFilename, uint8_t TargaFlags) {
    if (!BrushExists()) return false;
    TargaImage img;
    img.R = &BrushR;
    img.G = &BrushG;
    img.B = &BrushB;
    img.A = &BrushA;
    img.Width = BrushWidth;
    img.Height = BrushHeight;
    img.Flags = TargaFlags & 1;
    img.ImageType = 2;
    TargaBytes bytes = EncodeTarga(img);
    TargaHeader = ParseTargaHeader(bytes.data(), bytes.size());
    if (!WriteOverFile(TargaFilename, bytes.data(), bytes.size())) {
        Kelpwick_MsgBox("An error has occurred while saving.\n" + TargaFilename + " could not be written.");
        return false;
    }
    return true;
}

namespace MDIForm1 {
void Cust_Load_Click() {
    BrushDialog.Title = "Open a brush";
    BrushDialog.Filter = BrushOpenFilter;
    auto chosen = host().OpenFileDialog(BrushDialog);
    if (!chosen) return;
    // "All supported files" reads any picture through a temporary Targa.
    if (BrushDialog.FilterIndex <= 1) {
        LoadBrushFile(*chosen);
        return;
    }
    const std::string temp = TempFile("TempTGA.tga");
    if (ConvertToTarga(*chosen, temp) == 0) LoadBrushFile(temp);
}

void Cust_Save_Click() {
    if (!BrushExists()) {
        Kelpwick_MsgBox("No custom brush");
        return;
    }
    BrushDialog.Title = "Save a brush";
    BrushDialog.Filter = BrushSaveFilter;
    auto chosen = host().SaveFileDialog(BrushDialog);
    const int index = BrushDialog.FilterIndex;
    BrushDialog.Title = "Open a brush";
    BrushDialog.Filter = BrushOpenFilter;
    if (!chosen) return;
    if (index <= 1) {
        SaveTargaBrush(*chosen, 1);
        return;
    }
    static const char* const formats[] = {"", "", "BMP", "JPEG", "PSD", "PNG", "TGA", "TIF"};
    const std::string temp = TempFile("TempTGA.tga");
    if (index < 8 && SaveTargaBrush(temp, 1)) ConvertFromTarga(*chosen, temp, formats[index]);
}
}  // namespace MDIForm1
