// The mesh warp panel. The preview is a nearest-neighbour copy of the picture
// in screen colours, warped through per-pixel vectors into an off-screen
// picture the shell shows; Ok resamples the undo planes into the main planes
// through the mesh, bilinearly, on both threads.
#include "render/MeshWarp.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/display/Display.h"
#include "core/document/Buffers.h"
#include "core/frame/MDIForm1.h"
#include "core/framework/Boxes.h"
#include "core/framework/Host.h"
#include "core/framework/PanelLook.h"
#include "core/framework/vb.h"
#include "filter/FilterFrame.h"
#include "native/FilterThreads.h"
#include "native/MeshWarp.h"

namespace Meshwarp {
Grid<int16_t> MeshX, MeshY, MeshVecX, MeshVecY;
Grid<uint32_t> MeshPreview32;
int16_t MeshNodeCol = 0, MeshNodeRow = 0, MeshOriginX = 0, MeshOriginY = 0;
bool MeshTooTall = false, MeshReady = false, MeshDragging = false;
int16_t PreviewHeight = 0;

namespace {
uint32_t* Surface = nullptr;  // the off-screen 400 x 400 picture, while the panel is loaded
constexpr uint32_t GridColour = 0x00FFFF;  // yellow lines, red nodes: seen on most pictures
constexpr uint32_t NodeColour = 0x0000FF;

int GridValue(const TextBox& t) { return static_cast<int>(vb::Val(t.Text.get())); }
bool GridInRange(int v) { return v >= 2 && v <= 32; }
// Cells across and down: one fewer than the nodes the mesh was dimensioned for
// (the boxes may hold a value being typed that has not yet been taken).
int Gx() { return std::max(1, MeshX.ubX() - 1); }
int Gy() { return std::max(1, MeshX.ubY() - 1); }

kwmesh::Mesh MeshOf() { return {MeshX.data(), MeshY.data(), MeshX.ubX(), MeshX.ubY()}; }

// The mesh cleared: one node more each way than the grid has, all at rest.
void DimensionMesh() {
    const int nx = std::clamp(GridValue(Text1), 2, 32), ny = std::clamp(GridValue(Text2), 2, 32);
    MeshX = Grid<int16_t>::Make(nx, ny);
    MeshY = Grid<int16_t>::Make(nx, ny);
}

void FillPreview(int width, int height) {
    const int ph = PreviewHeight;
    MeshPreview32 = Grid<uint32_t>::Make(399, ph);
    const double sy = static_cast<double>(height - 1) / ph, sx = (width - 1) / 399.0;
    for (int r = 0; r <= ph; ++r)
        for (int c = 0; c <= 399; ++c) {
            const int x = std::clamp<int>(vb::CLng(c * sx), 0, width - 1);
            const int y = std::clamp<int>(vb::CLng(r * sy), 0, height - 1);
            MeshPreview32(c, r) = vb::RGB(BufR(x, y), BufG(x, y), BufB(x, y));
        }
}

// Where a node stands in the preview now.
void NodePosition(int col, int row, float& x, float& y) {
    x = col * (399.0f / Gx()) + MeshX(col, row);
    y = row * (static_cast<float>(PreviewHeight) / Gy()) + MeshY(col, row);
}

void PSet(int x, int y, uint32_t colour) {
    if (x >= 0 && y >= 0 && x < 400 && y < 400) Surface[y * 400 + x] = colour;
}

void Line(float x0, float y0, float x1, float y1) {
    const int n = static_cast<int>(std::max(std::fabs(x1 - x0), std::fabs(y1 - y0))) + 1;
    for (int i = 0; i <= n; ++i)
        PSet(static_cast<int>(std::lround(x0 + (x1 - x0) * i / n)), static_cast<int>(std::lround(y0 + (y1 - y0) * i / n)),
             GridColour);
}

void DrawGrid() {
    const int top = PreviewTop();
    for (int row = 0; row <= Gy(); ++row)
        for (int col = 0; col <= Gx(); ++col) {
            float x, y;
            NodePosition(col, row, x, y);
            float nx, ny;
            if (col < Gx()) NodePosition(col + 1, row, nx, ny), Line(x, y + top, nx, ny + top);
            if (row < Gy()) NodePosition(col, row + 1, nx, ny), Line(x, y + top, nx, ny + top);
        }
    for (int row = 0; row <= Gy(); ++row)
        for (int col = 0; col <= Gx(); ++col) {
            float x, y;
            NodePosition(col, row, x, y);
            for (int d = -1; d <= 1; ++d) {
                PSet(static_cast<int>(x) + d, static_cast<int>(y) + top, NodeColour);
                PSet(static_cast<int>(x), static_cast<int>(y) + top + d, NodeColour);
            }
        }
}

void EraseMesh() {
    MeshX.free(), MeshY.free(), MeshVecX.free(), MeshVecY.free(), MeshPreview32.free();
    MeshDragging = false;
}

// The grid boxes' change: a valid pair throws the mesh away and starts afresh.
void GridChanged() {
    if (!form.Loaded || !GridInRange(GridValue(Text1)) || !GridInRange(GridValue(Text2))) return;
    DimensionMesh();
    ResampleMorphVectors();
    Picture1_Paint();
}

void HoldGridText(TextBox& t) {
    const int v = GridValue(t);
    if (v < 2) t.Text = "2";
    else if (v > 32) t.Text = "32";
}
}  // namespace

int PreviewTop() { return vb::CInt((399 - PreviewHeight) / 2.0); }

void Form_Load() {
    MeshTooTall = MeshReady = MeshDragging = false;
    DimensionMesh();
    const FilterArea a = FilterSize();
    if (a.h > a.w || a.w < 2 || a.h < 2) {
        Kelpwick_MsgBox("Height is larger then width.  This situation is not currently supported.  My bad.");
        MeshTooTall = true;
        return;
    }
    // Rounded to 16 bits; a very flat picture still gets two preview rows.
    PreviewHeight = std::max<int16_t>(1, vb::CInt(399.0 * (a.h - 1) / (a.w - 1) - 1));
    MeshVecX = Grid<int16_t>::Make(399, PreviewHeight);
    MeshVecY = Grid<int16_t>::Make(399, PreviewHeight);
    FillPreview(a.w, a.h);
    Surface = host().OpenSurface(Picture1, 400, 400);
    if (!Surface) return Kelpwick_MsgBox("Cant start DirectX 7");
    MeshReady = true;
    ResampleMorphVectors();
    Picture1_Paint();
}

void ResampleMorphVectors() {
    if (MeshTooTall || MeshVecX.empty() || MeshX.empty()) return;
    kwmesh::ResampleMorphVectors(MeshOf(), Gx(), Gy(), PreviewHeight, MeshVecX.data(), MeshVecY.data());
}

void SelectNearest(float x, float y, int& column, int& row) {
    y -= (399 - PreviewHeight) / 2.0f;  // from the square into the preview
    float best = 10000;
    column = row = 0;
    for (int r = 0; r <= Gy(); ++r)
        for (int c = 0; c <= Gx(); ++c) {
            float px, py;
            NodePosition(c, r, px, py);
            const float d = std::fabs(x - px) + std::fabs(y - py);
            if (d < best) best = d, column = c, row = r;
        }
}

void Picture1_MouseDown(int, int, float x, float y) {
    if (MeshTooTall || MeshX.empty()) return;
    if (GridValue(Text1) < 2) Text1.Text = "2";
    if (GridValue(Text2) < 2) Text2.Text = "2";
    int col, row;
    SelectNearest(x, y, col, row);
    MeshNodeCol = static_cast<int16_t>(col), MeshNodeRow = static_cast<int16_t>(row);
    MeshOriginX = vb::CInt(col * 399.0 / Gx());
    MeshOriginY = vb::CInt(row * static_cast<double>(PreviewHeight) / Gy() + (399 - PreviewHeight) / 2.0);
    MeshDragging = true;
}

void Picture1_MouseMove(int button, int, float x, float y) {
    if (button == 0 || !MeshDragging || MeshX.empty()) return;
    MeshX(MeshNodeCol, MeshNodeRow) = vb::CInt(std::clamp(x - MeshOriginX, -4000.0f, 4000.0f));
    MeshY(MeshNodeCol, MeshNodeRow) = vb::CInt(std::clamp(y - MeshOriginY, -4000.0f, 4000.0f));
    ResampleMorphVectors();
    Picture1_Paint();
}

void Picture1_MouseUp(int, int, float, float) {
    MeshDragging = false;
    Picture1_Paint();
    Picture1.Refresh();
}

void Picture1_Paint() {
    if (!MeshReady || MeshTooTall || !Surface || !GridInRange(GridValue(Text1)) || !GridInRange(GridValue(Text2)))
        return;
    std::fill_n(Surface, 400 * 400, 0u);
    kwmesh::DrawMeshPreview(MeshPreview32.data(), MeshVecX.data(), MeshVecY.data(), PreviewHeight, Surface, 400,
                            PreviewTop());
    DrawGrid();
    host().PresentSurface(Picture1);
}

void Text1_LostFocus() {
    HoldGridText(Text1);
    GridChanged();
}

void Text2_LostFocus() {
    HoldGridText(Text2);
    GridChanged();
}

void ApplyMorph_AA() {
    const FilterArea a = FilterSize();
    if (a.empty() || MeshX.empty() || MeshTooTall) return;
    const kwmesh::Mesh mesh = MeshOf();
    const int gx = Gx(), gy = Gy();
    const uint8_t* const src[3] = {UndoR.data(), UndoG.data(), UndoB.data()};
    uint8_t* const dst[3] = {BufR.data(), BufG.data(), BufB.data()};
    Hourglass busy;
    InBands(a.h, std::max(16, a.h / 50), [&](int y0, int y1) {
        kwthreads::ForRows(y1 - y0, [&](int r0, int r1) {
            kwmesh::ApplyMorphRows(mesh, gx, gy, src, dst, a.w, a.h, y0 + r0, y0 + r1);
        }, 4);
    });
}

namespace {
void Close(bool apply) {
    if (apply) ApplyMorph_AA();
    EraseMesh();
    Unload(form);
    if (apply) RedisplayWindow();
}
}  // namespace

Form form("Meshwarp", "Warp mesh");
PictureBox Picture1(form, "Picture1", 400, 400);
Label Label1(form, "Label1", "Grid x");
TextBox Text1(form, "Text1", "8", GridChanged);
Label Label2(form, "Label2", "Grid y");
TextBox Text2(form, "Text2", "6", GridChanged);
CommandButton Command1(form, "Command1", "Ok", [] { Close(true); }, ButtonRole::Default);
CommandButton Command2(form, "Command2", "Cancel", [] { Close(false); }, ButtonRole::Cancel);

namespace {
struct Wiring {
    Wiring() {
        Text1.Caption.setQuietly("Grid x");
        Text2.Caption.setQuietly("Grid y");
        Picture1.MouseDown = Picture1_MouseDown;
        Picture1.MouseMove = Picture1_MouseMove;
        Picture1.MouseUp = Picture1_MouseUp;
        Picture1.Paint = Picture1_Paint;
        Text1.LostFocus = Text1_LostFocus;
        Text2.LostFocus = Text2_LostFocus;
        Command1.Group = Command2.Group = 1;
        form.Load = [] {
            PrefsCallBack(form);
            Form_Load();
        };
        form.Unload = [] {
            host().CloseSurface(Picture1);
            Surface = nullptr;
            MeshReady = false;
            Text1.Text.setQuietly("8");  // a fresh panel starts from the default grid
            Text2.Text.setQuietly("6");
        };
    }
} wiring;
}  // namespace
}  // namespace Meshwarp

void TransformMeshwarp_Click() {
    if (!DocumentExists()) return;
    filterSetup();
    Show(Meshwarp::form, false, &MDIForm1::form);
}
