// Another program's X window, painted and raised through the program's own X
// connection, on an Xvfb of the test's own. The "other program" is a second
// XCB connection that makes the window and then looks at what happened to it.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QWindow>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/xcb.h>

#include "core/framework/PanelLook.h"
#include "shell/ForeignWindow.h"

namespace {
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

// The other program: its own connection and a window of its own.
struct OtherProgram {
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    xcb_window_t window = 0;

    ~OtherProgram() { xcb_disconnect(c); }
    xcb_window_t MakeWindow(int width, int height, bool mapped) {
        window = xcb_generate_id(c);
        const uint32_t white = screen->white_pixel;
        xcb_create_window(c, XCB_COPY_FROM_PARENT, window, screen->root, 10, 10, static_cast<uint16_t>(width),
                          static_cast<uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual,
                          XCB_CW_BACK_PIXEL, &white);
        if (mapped) xcb_map_window(c, window);
        Sync();
        return window;
    }
    void Sync() { std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr)); }
    // The window's pixel, 0x00RRGGBB on Xvfb's 24-bit screen.
    uint32_t Pixel(int x, int y) {
        Reply<xcb_get_image_reply_t> r(
            xcb_get_image_reply(c, xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<int16_t>(x),
                                                 static_cast<int16_t>(y), 1, 1, ~0u), nullptr),
            &std::free);
        uint32_t p = 0;
        if (r) std::memcpy(&p, xcb_get_image_data(r.get()), 4);
        return p & 0xFFFFFF;
    }
    xcb_atom_t Atom(const char* name) {
        Reply<xcb_intern_atom_reply_t> r(
            xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, static_cast<uint16_t>(strlen(name)), name), nullptr),
            &std::free);
        return r ? r->atom : 0;
    }
    std::vector<uint32_t> Property(xcb_atom_t property) {
        Reply<xcb_get_property_reply_t> r(
            xcb_get_property_reply(c, xcb_get_property(c, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 64),
                                   nullptr),
            &std::free);
        if (!r || r->format != 32) return {};
        auto* v = static_cast<uint32_t*>(xcb_get_property_value(r.get()));
        return {v, v + xcb_get_property_value_length(r.get()) / 4};
    }
    bool Viewable() {
        Reply<xcb_get_window_attributes_reply_t> a(
            xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr), &std::free);
        return a && a->map_state == XCB_MAP_STATE_VIEWABLE;
    }
    // Where a top-level window stands among the root's children, bottom first.
    int StackingPlace(xcb_window_t w) {
        Reply<xcb_query_tree_reply_t> t(xcb_query_tree_reply(c, xcb_query_tree(c, screen->root), nullptr), &std::free);
        const xcb_window_t* kids = xcb_query_tree_children(t.get());
        for (int i = 0; i < xcb_query_tree_children_length(t.get()); ++i)
            if (kids[i] == w) return i;
        return -1;
    }
};

// A tile whose every pixel differs from its neighbours, so that a shifted or
// swapped channel shows.
PatternTile TestTile() {
    PatternTile t;
    t.size = 8;
    for (int i = 0; i < 64; ++i) t.pixels.push_back(static_cast<uint32_t>((i * 4) | ((255 - i * 3) << 8) | ((i * 7 % 256) << 16)));
    return t;
}

uint32_t AsRgb(uint32_t bgr) { return ((bgr & 0xFF) << 16) | (bgr & 0xFF00) | ((bgr >> 16) & 0xFF); }

TEST(ForeignWindow, TheTileBecomesTheWindowsBackground) {
    OtherProgram other;
    other.MakeWindow(40, 30, true);
    const PatternTile tile = TestTile();
    ASSERT_TRUE(PaintTileOnX11Window(other.window, tile));
    other.Sync();
    for (int y : {0, 5, 13, 29})
        for (int x : {0, 7, 8, 21, 39})
            EXPECT_EQ(other.Pixel(x, y), AsRgb(tile.pixels[static_cast<size_t>((y % 8) * 8 + x % 8)])) << x << "," << y;
}

TEST(ForeignWindow, AnIdThatNamesNoWindowIsRefused) {
    OtherProgram other;
    const xcb_window_t unused = xcb_generate_id(other.c);  // never created
    EXPECT_FALSE(PaintTileOnX11Window(unused, TestTile()));
    EXPECT_FALSE(RaiseX11WindowOnTop(unused, 0, 0));
    EXPECT_FALSE(PaintTileOnX11Window(0, TestTile()));
    EXPECT_FALSE(RaiseX11WindowOnTop(uint64_t{1} << 40, 0, 0));
}

TEST(ForeignWindow, RaisedAboveThisProgramsWindowAndKeptThere) {
    OtherProgram other;
    other.MakeWindow(50, 50, false);
    QWindow own;
    own.resize(60, 60);
    own.show();
    QGuiApplication::sync();
    other.Sync();
    ASSERT_TRUE(RaiseX11WindowOnTop(other.window, 0, 0));
    other.Sync();
    EXPECT_TRUE(other.Viewable());
    EXPECT_GT(other.StackingPlace(other.window), other.StackingPlace(static_cast<xcb_window_t>(own.winId())));
    EXPECT_EQ(other.Property(other.Atom("_NET_WM_STATE")), std::vector<uint32_t>{other.Atom("_NET_WM_STATE_ABOVE")});
    EXPECT_TRUE(other.Property(XCB_ATOM_WM_TRANSIENT_FOR).empty());
}

TEST(ForeignWindow, ShowModeOneMakesItModalToTheOwner) {
    OtherProgram other;
    other.MakeWindow(50, 50, true);
    ASSERT_TRUE(RaiseX11WindowOnTop(other.window, 1, 0x1234567));
    other.Sync();
    EXPECT_EQ(other.Property(other.Atom("_NET_WM_STATE")),
              (std::vector<uint32_t>{other.Atom("_NET_WM_STATE_ABOVE"), other.Atom("_NET_WM_STATE_MODAL")}));
    EXPECT_EQ(other.Property(XCB_ATOM_WM_TRANSIENT_FOR), std::vector<uint32_t>{0x1234567});
}

// An Xvfb of the test's own, on the display number it picks.
pid_t StartXvfb() {
    int fds[2];
    if (pipe(fds) != 0) return -1;
    const pid_t pid = fork();
    if (pid == 0) {
        close(fds[0]);
        const std::string fd = std::to_string(fds[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "320x240x24", "-nolisten", "tcp",
               static_cast<char*>(nullptr));
        _exit(127);
    }
    close(fds[1]);
    // Up to the newline: the server writes the number and the newline apart,
    // and a pipe closed between the two would end it.
    std::string number;
    char ch;
    while (read(fds[0], &ch, 1) == 1 && ch != '\n') number += ch;
    close(fds[0]);
    if (number.empty()) return -1;
    setenv("DISPLAY", (":" + number).c_str(), 1);
    return pid;
}
}  // namespace

int main(int argc, char** argv) {
    const pid_t xvfb = StartXvfb();
    if (xvfb < 0) {
        std::fprintf(stderr, "Xvfb did not start\n");
        return 1;
    }
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    int rc;
    {
        QGuiApplication app(argc, argv);
        ::testing::InitGoogleTest(&argc, argv);
        rc = RUN_ALL_TESTS();
    }
    kill(xvfb, SIGTERM);
    waitpid(xvfb, nullptr, 0);
    return rc;
}
