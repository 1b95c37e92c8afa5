// The mesh warp panel: the preview's geometry, dragging nodes, the grid boxes,
// Ok and Cancel, the refusals.
#include <algorithm>

#include "render/MeshWarp.h"
#include "tests/render/RenderFixture.h"

using MeshWarpTest = RenderTest;
using namespace Meshwarp;

namespace {
// The square's pixel at (x, y) as the box shows it.
uint32_t Shown(int x, int y) { return Picture1.pixels[static_cast<size_t>(y) * 400 + x]; }
}  // namespace

TEST_F(MeshWarpTest, ASquarePictureFillsTheSquareAndAnUntouchedGridChangesNothing) {
    Picture(64, 64);
    const auto before = Snapshot();
    TransformMeshwarp_Click();
    ASSERT_TRUE(MeshReady);
    EXPECT_EQ(PreviewHeight, 398);
    EXPECT_EQ(PreviewTop(), 0);  // (399 - 398) / 2 rounds half to even
    EXPECT_GT(host.surfacePresents, 0);
    // The preview is the picture, nearest neighbour, in screen colours.
    EXPECT_EQ(Shown(200, 200) & 0xFFFFFF, vb::RGB(BufR(32, 32), BufG(32, 32), BufB(32, 32)));
    EXPECT_EQ(MeshX.ubX(), 8);  // one spare column beyond the 8 nodes
    Command1.press();
    EXPECT_FALSE(form.Loaded);
    EXPECT_TRUE(MeshX.empty());
    EXPECT_EQ(Snapshot(), before);
}

TEST_F(MeshWarpTest, DraggingANodeWarpsThePreviewAndOkWarpsThePicture) {
    Picture(200, 100);
    const auto before = Snapshot();
    TransformMeshwarp_Click();
    EXPECT_EQ(PreviewHeight, vb::CInt(399.0 * 99 / 199 - 1));
    const int top = PreviewTop();
    const uint32_t restPixel = Shown(100, top + 60);
    // Node (2, 2) of the 8 x 6 grid rests at (2 * 399 / 7, 2 * ph / 5).
    const float nx = 2 * 399.0f / 7, ny = 2.0f * PreviewHeight / 5 + top;
    Picture1_MouseDown(1, 0, nx + 3, ny - 2);
    EXPECT_EQ(MeshNodeCol, 2);
    EXPECT_EQ(MeshNodeRow, 2);
    const int presents = host.surfacePresents;
    Picture1_MouseMove(1, 0, nx + 30, ny + 10);
    Picture1_MouseUp(1, 0, nx + 30, ny + 10);
    EXPECT_EQ(MeshX(2, 2), vb::CInt(nx + 30 - MeshOriginX));
    EXPECT_EQ(MeshY(2, 2), vb::CInt(ny + 10 - MeshOriginY));
    EXPECT_GT(host.surfacePresents, presents);
    EXPECT_NE(Shown(100, top + 60), restPixel);  // the preview followed the drag
    // A move without a button held does nothing.
    Picture1_MouseMove(0, 0, 5, 5);
    EXPECT_EQ(MeshX(2, 2), vb::CInt(nx + 30 - MeshOriginX));
    Command1.press();
    EXPECT_NE(Snapshot(), before);
    EXPECT_EQ(BufR(0, 0), before[0]);  // the corner node never moved
    RepaintUndo();
    EXPECT_EQ(Snapshot(), before);  // one undo step
}

TEST_F(MeshWarpTest, DraggingACornerOutwardsSmearsTheEdge) {
    Picture(100, 100);
    TransformMeshwarp_Click();
    Picture1_MouseDown(1, 0, 0, 0);  // the top left node
    Picture1_MouseMove(1, 0, 60, 0);
    Command1.press();
    // Near the corner the source lies left of the picture: column 0 repeats.
    EXPECT_EQ(BufR(0, 0), UndoR(0, 0));
    EXPECT_EQ(BufR(5, 0), UndoR(0, 0));
    EXPECT_EQ(BufG(10, 0), UndoG(0, 0));
    EXPECT_EQ(BufG(20, 0), UndoG(20, 0));  // the next node stayed: its cell is not moved
}

TEST_F(MeshWarpTest, NearestNodeByCityBlockAndGridChangesThrowTheMeshAway) {
    Picture(100, 100);
    TransformMeshwarp_Click();
    Text1.Text = "3";  // nodes at x 0, 199.5, 399
    Text2.Text = "3";
    int col = -1, row = -1;
    SelectNearest(190, 10, col, row);
    EXPECT_EQ(col, 1);
    EXPECT_EQ(row, 0);
    SelectNearest(99.75f, 0, col, row);  // half way: the first node wins
    EXPECT_EQ(col, 0);
    Picture1_MouseDown(1, 0, 399, 398);
    Picture1_MouseMove(1, 0, 380, 390);
    EXPECT_NE(MeshX(2, 2), 0);
    Text1.Text = "40";  // out of range while typing: nothing happens yet
    EXPECT_NE(MeshX(2, 2), 0);
    Text1.LostFocus();  // as the box's view sends it when the user leaves
    EXPECT_EQ(Text1.Text.get(), "32");
    EXPECT_EQ(MeshX.ubX(), 32);
    EXPECT_EQ(MeshX(2, 2), 0);  // a new mesh, at rest
    Text2.Text = "1";
    Text2.LostFocus();
    EXPECT_EQ(Text2.Text.get(), "2");
    Command2.press();
    EXPECT_EQ(Text1.Text.get(), "8");  // a fresh panel starts from the default grid
}

TEST_F(MeshWarpTest, RefusalsATallPictureAndAHostWithoutOffScreenPictures) {
    Picture(40, 60);
    const auto before = Snapshot();
    host.ExpectMessage("Height is larger then width.");
    TransformMeshwarp_Click();
    EXPECT_TRUE(MeshTooTall);
    const int presents = host.surfacePresents;
    Picture1_MouseDown(1, 0, 10, 10);
    Picture1_MouseMove(1, 0, 40, 40);
    Picture1_Paint();
    EXPECT_EQ(host.surfacePresents, presents);
    Command1.press();
    EXPECT_EQ(Snapshot(), before);

    Picture(60, 40);
    host.refuseSurfaces = true;
    host.ExpectMessage("Cant start DirectX 7");
    TransformMeshwarp_Click();
    EXPECT_FALSE(MeshReady);
    Picture1_MouseDown(1, 0, 0, PreviewTop());
    Picture1_MouseMove(1, 0, 50, PreviewTop() + 20);
    EXPECT_NE(MeshX(0, 0), 0);  // the drag still works on the mesh
    Command1.press();
    EXPECT_NE(BufR(3, 3), UndoR(3, 3));  // and Ok still warps
}
