// A test plug-in: drives a running Kelpwick through every operation of its
// automation interface with the C++ client and checks what comes back.
//   kw_exercise all          every operation once, on a 64 x 48 document the test made
//   kw_exercise big W H      a W x H document, one plane round-tripped through a memfd
//   kw_exercise lock         takes the lock, says "locked" and waits to be killed
// The exit code is the number of failed checks; each failure is printed.
#include <QCoreApplication>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QThread>
#include <cstdio>
#include <vector>

#include "plugins/KelpwickClient.h"

using kelpwick::Client;

namespace {
int failures = 0;

void Check(bool ok, const char* what) {
    if (ok) return;
    ++failures;
    std::fprintf(stderr, "FAILED: %s\n", what);
}

QVariant V(const QVariant& v) { return QVariant::fromValue(QDBusVariant(v)); }
QVariant N(int v) { return QVariant::fromValue(static_cast<short>(v)); }
QVariant Y(int v) { return QVariant::fromValue(static_cast<uchar>(v)); }

std::vector<uint8_t> Pattern(int columns, int rows, int a, int b) {
    std::vector<uint8_t> p(static_cast<size_t>(columns) * rows);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) p[static_cast<size_t>(y) * columns + x] = static_cast<uint8_t>(x * a + y * b);
    return p;
}

bool Same(const kelpwick::MappedPlane& m, const std::vector<uint8_t>& p) {
    return m.size() == p.size() && std::equal(p.begin(), p.end(), m.data());
}

void Planes(Client& k) {
    Check(k.bufferWidth() == 64 && k.bufferHeight() == 48, "the buffer properties give 64 x 48");
    const int c = 65, r = 49;  // the planes' bounds: one column and one row beyond the picture
    kelpwick::MappedPlane red = k.getPlane("Kel_GetRBuffer");
    Check(red.columns() == c && red.rows() == r && red.at(3, 5) == 13, "Kel_GetRBuffer gives the host's plane");
    const char* sets[] = {"Kel_SetRbuffer", "Kel_SetGBuffer", "Kel_SetBBuffer", "Kel_SetABuffer",
                          "Kel_SetSwapRBuffer", "Kel_SetSwapGBuffer", "Kel_SetSwapBBuffer"};
    const char* gets[] = {"Kel_GetRBuffer", "Kel_GetGBuffer", "Kel_GetBBuffer", "Kel_GetABuffer",
                          "Kel_GetSwapRBuffer", "Kel_GetSwapGBuffer", "Kel_GetSwapBBuffer"};
    for (int i = 0; i < 7; ++i) {
        const std::vector<uint8_t> p = Pattern(c, r, i + 1, 7);
        if (i % 2) k.setPlaneInline(sets[i], c, r, p.data());
        else k.setPlane(sets[i], c, r, p.data());
        Check(Same(k.getPlane(gets[i]), p), gets[i]);
    }
    // Each plane comes in a memfd of its own that stays mapped here: a plane got
    // earlier is untouched by gets of the others, and the same get again comes
    // in the same mapping.
    const kelpwick::MappedPlane green = k.getPlane("Kel_GetGBuffer");
    for (const char* get : gets) k.getPlane(get);
    Check(Same(green, Pattern(c, r, 2, 7)), "a plane got stays as it was through gets of the others");
    Check(k.getPlane("Kel_GetGBuffer").data() == green.data(), "a get of the same plane is not mapped anew");
    Check(k.number("Kel_GetRGB", {N(3), N(5)}) == (3 + 35) + ((6 + 35) << 8) + ((9 + 35) << 16), "Kel_GetRGB packs r, g, b");
    k.call("Kel_SetRGB", {N(1), N(1), Y(10), Y(20), Y(30)});
    Check(k.number("Kel_GetR", {N(1), N(1)}) == 10 && k.number("Kel_GetG", {N(1), N(1)}) == 20 &&
              k.number("Kel_GetB", {N(1), N(1)}) == 30,
          "Kel_SetRGB then Kel_GetR, Kel_GetG, Kel_GetB");
    const QList<QVariant> back = k.call("Kel_GetR", {N(2), N(4)});
    Check(back.size() == 3 && back[1].toInt() == 2 && back[2].toInt() == 4, "by-reference x and y come back");
}

void DocumentState(Client& k) {
    k.call("Kel_AlphaOn");
    Check(k.number("Kel_GetAlphabits") == 0, "Kel_AlphaOn: alpha bits 0");
    k.call("Kel_InitMarquee");
    k.call("Kel_AlphaOff");
    Check(k.number("Kel_GetAlphabits") == 255, "Kel_AlphaOff: alpha bits 255");
    k.call("Kel_SaveUndo");
    k.call("Kel_Refresh");
    Check(k.number("Kel_SetMousePointer", {N(11)}) == 0, "the pointer was the default");
    Check(k.number("Kel_SetMousePointer", {N(0)}) == 11, "the pointer was the hourglass");
    k.call("Kel_NewFilename", {QString("/tmp/plugged.tga")});
    k.call("Kel_NewBrushFilename", {QString("/tmp/plugged-brush.tga")});
}

void Colours(Client& k) {
    QList<int> wells;
    for (int i = 0; i < 64; ++i) wells.push_back(i * 1000);
    k.call("Kel_SetWells", {V(QVariant::fromValue(wells))});
    const QVariant got = k.call("Kel_GetWells").front().value<QDBusVariant>().variant();
    Check(qdbus_cast<QList<int>>(got) == wells, "Kel_GetWells gives the wells set");
    const int selected = static_cast<int>(k.number("Kel_GetGradientIndex"));
    QByteArray ramp(768, '\0');
    for (int i = 0; i < 768; ++i) ramp[i] = static_cast<char>(255 - i % 256 + i / 256);
    k.call("Kel_SetGradient", {V(ramp), N(selected)});
    const QVariant gradient = k.call("Kel_GetGradient", {N((selected + 1) % 8)}).front().value<QDBusVariant>().variant();
    Check(gradient.toByteArray() == ramp, "Kel_GetGradient gives the selected gradient whatever the index");
    k.call("Kel_SetPrimaryColor", {Y(1), Y(2), Y(3)});
    k.call("Kel_SetSecondaryColor", {Y(4), Y(5), Y(6)});
    Check(k.number("Kel_GetPrimaryColor") == 0x030201, "Kel_GetPrimaryColor");
    Check(k.number("Kel_GetSecondaryColor") == 0x060504, "Kel_GetSecondaryColor");
}

void Brush(Client& k) {
    Check(k.getPlane("Kel_GetBrushRBuffer").size() == 0, "no brush: Kel_GetBrushRBuffer gives -1");
    const QVariant made = k.call("Kel_CreateEmptyBrush", {V(10), V(8)}).front().value<QDBusVariant>().variant();
    Check(made.toInt() == 0, "Kel_CreateEmptyBrush succeeds");
    Check(k.number("Kel_GetBrushWidth") == 10 && k.number("Kel_GetBrushHeight") == 8, "the brush is 10 x 8");
    const char* sets[] = {"Kel_SetBrushRBuffer", "Kel_SetBrushGBuffer", "Kel_SetBrushBBuffer", "Kel_SetBrushABuffer"};
    const char* gets[] = {"Kel_GetBrushRBuffer", "Kel_GetBrushGBuffer", "Kel_GetBrushBBuffer", "Kel_GetBrushABuffer"};
    for (int i = 0; i < 4; ++i) {
        const std::vector<uint8_t> p = Pattern(11, 9, 5, i + 2);
        k.setPlane(sets[i], 11, 9, p.data());
        Check(Same(k.getPlane(gets[i]), p), gets[i]);
    }
    k.call("Kel_ActivateCustomBrush");
}

void Frames(Client& k) {
    k.call("Kel_CreateAnim", {3});
    Check(k.number("Kel_GetTotalFrames") == 3, "three frames");
    k.call("Kel_GotoFrame", {1});
    Check(k.number("Kel_GetCurrentFrame") == 1, "at frame 1");
    k.call("Kel_StoreFrame");
    k.call("Kel_GetFrame");
    k.call("Kel_InsertFrame", {0});
    Check(k.number("Kel_GetTotalFrames") == 4, "a frame inserted");
    k.call("Kel_DeleteFrame", {0});
    Check(k.number("Kel_GetTotalFrames") == 3, "a frame deleted");
    k.call("Kel_FreeAnim");
    Check(k.number("Kel_GetTotalFrames") == 0, "the animation freed");
}

void UserAndLock(Client& k) {
    k.call("Kel_Lock");
    k.call("Kel_Unlock");
    k.call("Kel_SetProgress", {50.0});
    Check(k.call("Kel_ValueBox", {QString("Pick"), N(3), N(9)}, Client::Forever).front().toInt() == 5,
          "Kel_ValueBox gives the user's value");
    Check(k.call("Kel_QuestionBox", {V(QString("Go on?"))}, Client::Forever).front().toInt() == 1,
          "Kel_QuestionBox gives 1 for OK");
    k.call("Kel_MessageBox", {V(QString("Hello from a plug-in"))}, Client::Forever);
    Check(k.call("Kel_RequestFile_Save", {QString("Save it"), QString("a.tga"), QString("Targa|*.tga")},
                 Client::Forever).front().toString() == "/tmp/chosen.tga",
          "Kel_RequestFile_Save gives the chosen name");
    Check(k.call("Kel_RequestFile_Open", {QString("Open it"), QString(""), QString("Targa|*.tga")},
                 Client::Forever).front().toString().isEmpty(),
          "a cancelled Kel_RequestFile_Open gives \"\"");
    for (const char* op : {"Kel_TileTextureMe", "Kel_SendFormObject"}) {
        QList<QVariant> args{QVariant::fromValue(qulonglong(1))};
        if (std::string(op) == "Kel_SendFormObject") args.push_back(N(1));
        try {
            k.call(op, args);
            Check(false, op);
        } catch (const kelpwick::Error& e) {
            Check(e.name == "org.kelpwick.Kelpwick.Error.NotSupported", op);
        }
    }
    k.call("Kel_NewBuffer", {N(32), N(24)});
    Check(k.bufferWidth() == 32 && k.bufferHeight() == 24, "Kel_NewBuffer makes a 32 x 24 buffer");
    k.call("Kel_RenameBuffer", {QString("Plugged")});  // the new buffer's window starts with its own caption
}

void Big(Client& k, int w, int h) {
    k.call("Kel_NewBuffer", {N(w), N(h)});
    const int c = w + 1, r = h + 1;
    const std::vector<uint8_t> p = Pattern(c, r, 3, 5);
    k.setPlane("Kel_SetGBuffer", c, r, p.data());
    Check(Same(k.getPlane("Kel_GetGBuffer"), p), "the big plane comes back as it went");
}
}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList a = app.arguments();
    Client k;
    try {
        if (a.size() >= 2 && a[1] == "all") {
            Planes(k);
            DocumentState(k);
            Colours(k);
            Brush(k);
            Frames(k);
            UserAndLock(k);
        } else if (a.size() >= 4 && a[1] == "big") {
            Big(k, a[2].toInt(), a[3].toInt());
        } else if (a.size() >= 2 && a[1] == "lock") {
            k.call("Kel_Lock");
            std::puts("locked");
            std::fflush(stdout);
            for (;;) QThread::sleep(1);
        } else {
            std::fprintf(stderr, "usage: kw_exercise all | big W H | lock\n");
            return 2;
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "FAILED with an error: %s\n", e.what());
        return 100;
    }
    return failures;
}
