#!/usr/bin/python3
"""Drives a running Kelpwick through its automation interface with python3-dbus.

  exercise.py all          every operation once on the 64 x 48 document the test made
  exercise.py refusals     every kind of bad argument, each refused with its error
  exercise.py introspect   prints the interface as introspected, one line per member
  exercise.py invert-red   a filter plug-in: the red plane turned negative
  exercise.py lock-and-leave FILE
                           takes the lock, leaves its bus connection to a child that
                           writes its pid to FILE and sleeps, and ends

The exit code is the number of failed checks; each failure is printed.
"""
import mmap
import os
import sys
import time
import xml.etree.ElementTree as ET

import dbus

NAME = os.environ.get("KELPWICK_BUS_NAME", "org.kelpwick.Kelpwick")
PATH = "/org/kelpwick/Kelpwick"
IFACE = "org.kelpwick.Kelpwick._Kelpwick_Class"
FOREVER = 24 * 3600.0  # the boxes answer when the user does

failures = 0


def check(ok, what):
    global failures
    if not ok:
        failures += 1
        print("FAILED:", what, file=sys.stderr)


bus = dbus.SessionBus()
k = dbus.Interface(bus.get_object(NAME, PATH), IFACE)
props = dbus.Interface(bus.get_object(NAME, PATH), "org.freedesktop.DBus.Properties")
N, Y = dbus.Int16, dbus.Byte


def pattern(columns, rows, a, b):
    return bytes((x * a + y * b) & 255 for y in range(rows) for x in range(columns))


def memfd(data):
    fd = os.memfd_create("plane", os.MFD_CLOEXEC | os.MFD_ALLOW_SEALING)
    os.write(fd, data)
    return fd


def plane_fd(columns, rows, data):
    fd = memfd(data)
    arg = dbus.Struct((dbus.Int32(columns), dbus.Int32(rows), dbus.types.UnixFd(fd)), signature="iih")
    os.close(fd)
    return arg


def plane_inline(columns, rows, data):
    return dbus.Struct((dbus.Int32(columns), dbus.Int32(rows), dbus.ByteArray(data)), signature="iiay")


def read_plane(reply):
    """The bytes of a plane a get operation gave, or None for the integer -1."""
    if not isinstance(reply, dbus.Struct):
        return None
    columns, rows, fd = int(reply[0]), int(reply[1]), reply[2].take()
    with mmap.mmap(fd, columns * rows, prot=mmap.PROT_READ) as m:
        data = bytes(m)
    os.close(fd)
    return columns, rows, data


def run_all():
    c, r = 65, 49
    check(props.Get(IFACE, "Kel_BufferWidth") == 64 and props.Get(IFACE, "Kel_BufferHeight") == 48,
          "the buffer properties give 64 x 48")
    pairs = [("Kel_SetRbuffer", "Kel_GetRBuffer"), ("Kel_SetGBuffer", "Kel_GetGBuffer"),
             ("Kel_SetBBuffer", "Kel_GetBBuffer"), ("Kel_SetABuffer", "Kel_GetABuffer"),
             ("Kel_SetSwapRBuffer", "Kel_GetSwapRBuffer"), ("Kel_SetSwapGBuffer", "Kel_GetSwapGBuffer"),
             ("Kel_SetSwapBBuffer", "Kel_GetSwapBBuffer")]
    first = read_plane(k.Kel_GetRBuffer())
    check(first[:2] == (c, r) and first[2][5 * c + 3] == 13, "Kel_GetRBuffer gives the host's plane")
    for i, (set_op, get_op) in enumerate(pairs):
        data = pattern(c, r, i + 1, 7)
        arg = plane_inline(c, r, data) if i % 2 else plane_fd(c, r, data)
        getattr(k, set_op)(arg)
        check(read_plane(getattr(k, get_op)()) == (c, r, data), get_op)
    check(k.Kel_GetRGB(N(3), N(5))[0] == 38 + (41 << 8) + (44 << 16), "Kel_GetRGB packs r, g, b")
    k.Kel_SetRGB(N(1), N(1), Y(10), Y(20), Y(30))
    check([k.Kel_GetR(N(1), N(1))[0], k.Kel_GetG(N(1), N(1))[0], k.Kel_GetB(N(1), N(1))[0]] == [10, 20, 30],
          "Kel_SetRGB then Kel_GetR, Kel_GetG, Kel_GetB")

    k.Kel_AlphaOn()
    check(k.Kel_GetAlphabits() == 0, "Kel_AlphaOn: alpha bits 0")
    k.Kel_InitMarquee()
    k.Kel_AlphaOff()
    check(k.Kel_GetAlphabits() == 255, "Kel_AlphaOff: alpha bits 255")
    k.Kel_SaveUndo()
    k.Kel_Refresh()
    check(k.Kel_SetMousePointer(N(11)) == 0 and k.Kel_SetMousePointer(N(0)) == 11, "Kel_SetMousePointer")
    k.Kel_NewFilename("/tmp/plugged.tga")
    k.Kel_NewBrushFilename("/tmp/plugged-brush.tga")

    wells = [i * 1000 for i in range(64)]
    k.Kel_SetWells(dbus.Array(wells, signature="i"))
    check(list(k.Kel_GetWells()) == wells, "Kel_GetWells gives the wells set")
    selected = int(k.Kel_GetGradientIndex())
    ramp = bytes((255 - i % 256 + i // 256) & 255 for i in range(768))
    k.Kel_SetGradient(dbus.ByteArray(ramp), N(selected))
    check(bytes(k.Kel_GetGradient(N((selected + 1) % 8))[0]) == ramp, "Kel_GetGradient gives the selected one")
    k.Kel_SetPrimaryColor(Y(1), Y(2), Y(3))
    k.Kel_SetSecondaryColor(Y(4), Y(5), Y(6))
    check(k.Kel_GetPrimaryColor() == 0x030201 and k.Kel_GetSecondaryColor() == 0x060504, "the pen colours")

    check(read_plane(k.Kel_GetBrushRBuffer()) is None, "no brush: Kel_GetBrushRBuffer gives -1")
    check(k.Kel_CreateEmptyBrush(dbus.Int32(10), dbus.Int32(8)) == 0, "Kel_CreateEmptyBrush succeeds")
    check((k.Kel_GetBrushWidth(), k.Kel_GetBrushHeight()) == (10, 8), "the brush is 10 x 8")
    for i, ch in enumerate("RGBA"):
        data = pattern(11, 9, 5, i + 2)
        getattr(k, "Kel_SetBrush%sBuffer" % ch)(plane_fd(11, 9, data))
        check(read_plane(getattr(k, "Kel_GetBrush%sBuffer" % ch)()) == (11, 9, data), "brush plane " + ch)
    k.Kel_ActivateCustomBrush()

    k.Kel_CreateAnim(dbus.Int32(3))
    check(k.Kel_GetTotalFrames() == 3, "three frames")
    k.Kel_GotoFrame(dbus.Int32(1))
    check(k.Kel_GetCurrentFrame() == 1, "at frame 1")
    k.Kel_StoreFrame()
    k.Kel_GetFrame()
    k.Kel_InsertFrame(dbus.Int32(0))
    check(k.Kel_GetTotalFrames() == 4, "a frame inserted")
    k.Kel_DeleteFrame(dbus.Int32(0))
    check(k.Kel_GetTotalFrames() == 3, "a frame deleted")
    k.Kel_FreeAnim()
    check(k.Kel_GetTotalFrames() == 0, "the animation freed")

    k.Kel_Lock()
    k.Kel_Unlock()
    k.Kel_SetProgress(50.0)
    check(k.Kel_ValueBox("Pick", N(3), N(9), timeout=FOREVER)[0] == 5, "Kel_ValueBox gives the user's value")
    check(k.Kel_QuestionBox("Go on?", timeout=FOREVER)[0] == 1, "Kel_QuestionBox gives 1 for OK")
    k.Kel_MessageBox("Hello from a plug-in", timeout=FOREVER)
    check(k.Kel_RequestFile_Save("Save it", "a.tga", "Targa|*.tga", timeout=FOREVER)[0] == "/tmp/chosen.tga",
          "Kel_RequestFile_Save gives the chosen name")
    check(k.Kel_RequestFile_Open("Open it", "", "Targa|*.tga", timeout=FOREVER)[0] == "",
          "a cancelled Kel_RequestFile_Open gives ''")
    for call in (lambda: k.Kel_TileTextureMe(dbus.UInt64(1)), lambda: k.Kel_SendFormObject(dbus.UInt64(1), N(1))):
        check(refused(call) == "org.kelpwick.Kelpwick.Error.NotSupported", "a window the host cannot reach is refused")
    k.Kel_NewBuffer(N(32), N(24))
    check((props.Get(IFACE, "Kel_BufferWidth"), props.Get(IFACE, "Kel_BufferHeight")) == (32, 24),
          "Kel_NewBuffer makes a 32 x 24 buffer")
    k.Kel_RenameBuffer("Plugged")  # the new buffer's window starts with its own caption


def refused(call, fragment=""):
    """The error name of a call that must be refused, checking its message."""
    try:
        call()
    except dbus.exceptions.DBusException as e:
        if fragment and fragment not in e.get_dbus_message():
            print("unexpected message:", e.get_dbus_message(), file=sys.stderr)
            return "wrong message"
        return e.get_dbus_name()
    return "accepted"


def run_refusals():
    bad = "org.freedesktop.DBus.Error.InvalidArgs"
    c, r = 65, 49
    cases = [
        ("a plane of other bounds", lambda: k.Kel_SetRbuffer(plane_fd(64, 48, bytes(64 * 48))), "must be 65 by 49"),
        ("inline bytes short of the bounds", lambda: k.Kel_SetGBuffer(plane_inline(c, r, bytes(10))), "bytes"),
        ("a memfd short of the bounds", lambda: k.Kel_SetABuffer(plane_fd(c, r, bytes(10))), "bytes"),
        ("a plane that is not an array", lambda: k.Kel_SetSwapRBuffer("hello"), "(iih)"),
        ("x left of the picture", lambda: k.Kel_GetRGB(N(-1), N(0)), "outside the picture"),
        ("x right of the picture", lambda: k.Kel_GetR(N(64), N(0)), "outside the picture"),
        ("y below the picture", lambda: k.Kel_SetRGB(N(0), N(48), Y(1), Y(1), Y(1)), "outside the picture"),
        ("gradient index 8", lambda: k.Kel_SetGradient(dbus.ByteArray(bytes(768)), N(8)), "0..7"),
        ("gradient index -1", lambda: k.Kel_GetGradient(N(-1)), "0..7"),
        ("a gradient of 767 bytes", lambda: k.Kel_SetGradient(dbus.ByteArray(bytes(767)), N(0)), "768"),
        ("63 wells", lambda: k.Kel_SetWells(dbus.Array(range(63), signature="i")), "63 elements"),
        ("a well that is no colour", lambda: k.Kel_SetWells(dbus.Array([1 << 24] * 64, signature="i")), "colour"),
        ("wells as text", lambda: k.Kel_SetWells("red"), "array"),
        ("a coordinate of the wrong type",
         lambda: bus.call_blocking(NAME, PATH, IFACE, "Kel_GetR", "ii", (1, 1)), "takes (nn)"),
        ("progress above 100", lambda: k.Kel_SetProgress(150.0), "between 0 and 100"),
        ("a value box upside down", lambda: k.Kel_ValueBox("t", N(9), N(3)), "Min"),
        ("a buffer of no width", lambda: k.Kel_NewBuffer(N(0), N(10)), "cannot be made"),
        ("a brush side that is text", lambda: k.Kel_CreateEmptyBrush("wide", dbus.Int32(3)), "number"),
        ("a brush of no height", lambda: k.Kel_CreateEmptyBrush(dbus.Int32(3), dbus.Int32(0)), "1..32767"),
        ("an animation of no frames", lambda: k.Kel_CreateAnim(dbus.Int32(0)), "cannot be made"),
    ]
    for what, call, fragment in cases:
        check(refused(call, fragment) == bad, what)
    check(refused(lambda: k.Kel_SetBrushRBuffer(plane_fd(3, 3, bytes(9))), "custom brush")
          == "org.kelpwick.Kelpwick.Error.NoCustomBrush", "a brush plane with no brush")


def run_introspect():
    xml = bus.get_object(NAME, PATH).Introspect(dbus_interface="org.freedesktop.DBus.Introspectable")
    for iface in ET.fromstring(xml).findall("interface"):
        if iface.get("name") != IFACE:
            continue
        for member in iface:
            notes = {a.get("name"): a.get("value") for a in member.findall("annotation")}
            args = ",".join("%s:%s:%s" % (a.get("direction"), a.get("name"), a.get("type"))
                            for a in member.findall("arg"))
            print("%s|%s|%s|%s|%s" % (member.get("name"), notes.get("org.kelpwick.MemberId", ""), args,
                                      member.tag, notes.get("org.freedesktop.DBus.Description", "")))


def run_invert_red():
    columns, rows, data = read_plane(k.Kel_GetRBuffer())
    k.Kel_SetRbuffer(plane_fd(columns, rows, bytes(255 - b for b in data)))


def run_lock_and_leave():
    k.Kel_Lock()
    child = os.fork()
    if child == 0:
        # The connection lives on here, so the bus still knows the caller.
        with open(sys.argv[2] + ".tmp", "w") as f:
            f.write(str(os.getpid()))
        os.rename(sys.argv[2] + ".tmp", sys.argv[2])
        time.sleep(120)
        os._exit(0)
    # A moment with the lock held, for the host to be seen holding it.
    time.sleep(1)
    os._exit(0)


if __name__ == "__main__":
    mode = sys.argv[1] if len(sys.argv) > 1 else ""
    {"all": run_all, "refusals": run_refusals, "introspect": run_introspect,
     "invert-red": run_invert_red, "lock-and-leave": run_lock_and_leave}[mode]()
    sys.exit(failures)
