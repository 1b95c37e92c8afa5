// Another program's X window reached through Qt's own XCB connection.
#include "shell/ForeignWindow.h"

#include <QGuiApplication>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

#include "core/framework/PanelLook.h"

namespace {
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

xcb_connection_t* Connection() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

// The window's geometry, nullptr when the id names no window (or the id does not fit X's 32 bits).
Reply<xcb_get_geometry_reply_t> Geometry(xcb_connection_t* c, uint64_t window) {
    if (window == 0 || window > 0xFFFFFFFFu) return {nullptr, &std::free};
    return {xcb_get_geometry_reply(c, xcb_get_geometry(c, static_cast<xcb_window_t>(window)), nullptr), &std::free};
}

xcb_atom_t Atom(xcb_connection_t* c, const char* name) {
    Reply<xcb_intern_atom_reply_t> r(xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, static_cast<uint16_t>(strlen(name)), name), nullptr),
                                     &std::free);
    return r ? r->atom : xcb_atom_t{XCB_ATOM_NONE};
}

// The visual of a depth-24 or 32 true-colour window with 8-bit channels, as
// shifts of red, green and blue; false for any other.
bool ChannelShifts(xcb_connection_t* c, xcb_window_t w, int shift[3]) {
    Reply<xcb_get_window_attributes_reply_t> a(
        xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, w), nullptr), &std::free);
    if (!a) return false;
    for (auto s = xcb_setup_roots_iterator(xcb_get_setup(c)); s.rem; xcb_screen_next(&s))
        for (auto d = xcb_screen_allowed_depths_iterator(s.data); d.rem; xcb_depth_next(&d))
            for (auto v = xcb_depth_visuals_iterator(d.data); v.rem; xcb_visualtype_next(&v)) {
                if (v.data->visual_id != a->visual) continue;
                if (v.data->_class != XCB_VISUAL_CLASS_TRUE_COLOR) return false;
                const uint32_t masks[3] = {v.data->red_mask, v.data->green_mask, v.data->blue_mask};
                for (int i = 0; i < 3; ++i) {
                    shift[i] = __builtin_ctz(masks[i] | 0x80000000u);
                    if ((masks[i] >> shift[i]) != 0xFF) return false;
                }
                return true;
            }
    return false;
}

// 32 bits a pixel in Z format for this depth, as every true-colour server of 24 and 32 gives.
bool ThirtyTwoBitPixels(xcb_connection_t* c, uint8_t depth) {
    const xcb_setup_t* setup = xcb_get_setup(c);
    for (auto f = xcb_setup_pixmap_formats_iterator(setup); f.rem; xcb_format_next(&f))
        if (f.data->depth == depth) return f.data->bits_per_pixel == 32;
    return false;
}
}  // namespace

bool PaintTileOnX11Window(uint64_t window, const PatternTile& tile) {
    xcb_connection_t* c = Connection();
    if (!c || tile.size <= 0) return false;
    auto g = Geometry(c, window);
    if (!g) return false;
    const auto w = static_cast<xcb_window_t>(window);
    int shift[3];
    if ((g->depth != 24 && g->depth != 32) || !ChannelShifts(c, w, shift) || !ThirtyTwoBitPixels(c, g->depth))
        return false;
    // The tile's pixels are 0x00BBGGRR; the window's visual says where each channel goes.
    std::vector<uint32_t> pixels(tile.pixels.size());
    for (size_t i = 0; i < pixels.size(); ++i) {
        const uint32_t p = tile.pixels[i];
        pixels[i] = ((p & 0xFF) << shift[0]) | (((p >> 8) & 0xFF) << shift[1]) | (((p >> 16) & 0xFF) << shift[2]);
        if (g->depth == 32) pixels[i] |= 0xFF000000u;  // opaque
    }
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    const auto side = static_cast<uint16_t>(tile.size);
    xcb_create_pixmap(c, g->depth, pixmap, w, side, side);
    const xcb_gcontext_t gc = xcb_generate_id(c);
    xcb_create_gc(c, gc, pixmap, 0, nullptr);
    xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, side, side, 0, 0, 0, g->depth,
                  static_cast<uint32_t>(pixels.size() * 4), reinterpret_cast<const uint8_t*>(pixels.data()));
    xcb_free_gc(c, gc);
    // The server keeps the background and repaints it at every exposure, after we have let go of the pixmap.
    const uint32_t back = pixmap;
    xcb_void_cookie_t set = xcb_change_window_attributes_checked(c, w, XCB_CW_BACK_PIXMAP, &back);
    xcb_free_pixmap(c, pixmap);
    xcb_clear_area(c, 1, w, 0, 0, 0, 0);
    std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(xcb_request_check(c, set), &std::free);
    xcb_flush(c);
    return !error;
}

bool RaiseX11WindowOnTop(uint64_t window, int showMode, uint64_t owner) {
    xcb_connection_t* c = Connection();
    if (!c) return false;
    auto g = Geometry(c, window);
    if (!g) return false;
    const auto w = static_cast<xcb_window_t>(window);
    const xcb_atom_t state = Atom(c, "_NET_WM_STATE"), above = Atom(c, "_NET_WM_STATE_ABOVE"),
                     modal = Atom(c, "_NET_WM_STATE_MODAL");
    const bool isModal = showMode == 1;
    // Read by a window manager when the window is mapped...
    const xcb_atom_t states[2] = {above, modal};
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, w, state, XCB_ATOM_ATOM, 32, isModal ? 2 : 1, states);
    if (isModal && owner != 0 && owner <= 0xFFFFFFFFu) {
        const auto transientFor = static_cast<xcb_window_t>(owner);
        xcb_change_property(c, XCB_PROP_MODE_REPLACE, w, XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1,
                            &transientFor);
    }
    xcb_map_window(c, w);
    // ...and asked of it for a window already mapped.
    xcb_client_message_event_t ask{};
    ask.response_type = XCB_CLIENT_MESSAGE;
    ask.format = 32;
    ask.window = w;
    ask.type = state;
    ask.data.data32[0] = 1;  // add
    ask.data.data32[1] = above;
    ask.data.data32[2] = isModal ? modal : 0;
    ask.data.data32[3] = 1;  // from an application
    xcb_send_event(c, 0, g->root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&ask));
    const uint32_t top = XCB_STACK_MODE_ABOVE;
    xcb_void_cookie_t raise = xcb_configure_window_checked(c, w, XCB_CONFIG_WINDOW_STACK_MODE, &top);
    std::unique_ptr<xcb_generic_error_t, decltype(&std::free)> error(xcb_request_check(c, raise), &std::free);
    xcb_flush(c);
    return !error;
}
