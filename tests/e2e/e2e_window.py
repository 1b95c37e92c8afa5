#!/usr/bin/env python3
"""End-to-end: the real program in a real X window on its own Xvfb server.

It starts, the size dialog is answered, the canvas shows the secondary colour,
keys change what is shown, and the frame's title follows. Every wait polls for
a condition with a generous time-out; nothing sleeps a fixed time and hopes."""

import os
import subprocess
import sys
import tempfile
import time

from PIL import Image

BINARY = sys.argv[1]
TIMEOUT = 60.0


def wait_for(what, check, timeout=TIMEOUT):
    end = time.time() + timeout
    last = None
    while time.time() < end:
        last = check()
        if last:
            return last
        time.sleep(0.2)
    raise AssertionError(f"timed out waiting for {what} (last seen: {last!r})")


def start_xvfb():
    r, w = os.pipe()
    proc = subprocess.Popen(["Xvfb", "-displayfd", str(w), "-screen", "0", "1600x1000x24", "-nolisten", "tcp"],
                            pass_fds=(w,), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(w)
    number = b""
    while not number.endswith(b"\n"):
        chunk = os.read(r, 16)
        if not chunk:
            raise AssertionError("Xvfb did not start")
        number += chunk
    os.close(r)
    return proc, ":" + number.decode().strip()


def run(env, *args):
    return subprocess.run(list(args), env=env, capture_output=True, text=True, timeout=30)


def window_names(env):
    out = run(env, "xdotool", "search", "--name", ".")
    names = []
    for wid in out.stdout.split():
        n = run(env, "xdotool", "getwindowname", wid).stdout.rstrip("\n")
        names.append(n)
    return names


def title_starting(env, prefix):
    for n in window_names(env):
        if n.startswith(prefix):
            return n
    return None


def screenshot(env, path):
    run(env, "import", "-window", "root", path)
    return Image.open(path).convert("RGB")


def share_of(img, colour, box):
    region = img.crop(box)
    pixels = list(region.getdata())
    return sum(1 for p in pixels if p == colour) / len(pixels)


def tool_buttons(img):
    """The tool buttons in reading order, as (y, left, right): the rows of the panel's
    button grid, each seen on the line just inside the buttons' top border."""
    faces = ((236, 232, 228), (85, 85, 102))  # a tool that is up, the tool that is down

    def runs_at(y):
        runs, start = [], None
        for x in range(0, 620):
            face = img.getpixel((x, y))[:3] in faces
            if face and start is None:
                start = x
            if not face and start is not None:
                if x - start >= 20:
                    runs.append((start, x - 1))
                start = None
        return runs

    buttons, in_row = [], False
    for y in range(30, 220):
        runs = runs_at(y)
        if len(runs) >= 3 and not in_row:
            buttons += [(y + 3, left, right) for left, right in runs]
        in_row = len(runs) >= 3
    return buttons if len(buttons) >= 7 else None


def main():
    xvfb, display = start_xvfb()
    tmp = tempfile.mkdtemp(prefix="kelpwick-e2e-")
    env = dict(os.environ, DISPLAY=display, HOME=tmp, XDG_CONFIG_HOME=os.path.join(tmp, "config"))
    env.pop("QT_QPA_PLATFORM", None)
    env["ASAN_OPTIONS"] = "detect_leaks=0"
    app = subprocess.Popen([BINARY], env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    shot = os.path.join(tmp, "shot.png")
    try:
        wait_for("the size dialog", lambda: "Buffer size" in window_names(env))
        # A buffer larger than the window, so the canvas fills the area we look at.
        run(env, "xdotool", "key", "ctrl+a")
        run(env, "xdotool", "type", "1800")
        run(env, "xdotool", "key", "Tab", "ctrl+a")
        run(env, "xdotool", "type", "1200")
        run(env, "xdotool", "key", "Return")
        # The maximised canvas joins its caption to the frame's, once.
        wait_for("the frame title", lambda: "Project Kelpwick  (Main)   - [Canvas]" in window_names(env))

        box = (700, 200, 1200, 700)  # inside the canvas, right of the tool panel
        white = wait_for("a white canvas",
                         lambda: share_of(screenshot(env, shot), (255, 255, 255), box) > 0.95)
        assert white

        # Invert the alpha (all 0), copy it into the swap buffer, swap: the canvas turns black.
        run(env, "xdotool", "key", "bar", "W", "j")
        wait_for("the swap title", lambda: title_starting(env, "Project Kelpwick  (Swap)  "))
        wait_for("a black canvas", lambda: share_of(screenshot(env, shot), (0, 0, 0), box) > 0.95)

        # Undo takes the swap back.
        run(env, "xdotool", "key", "u")
        wait_for("the main title again", lambda: title_starting(env, "Project Kelpwick  (Main)  "))
        wait_for("a white canvas again", lambda: share_of(screenshot(env, shot), (255, 255, 255), box) > 0.95)

        # A real stroke with the mouse: press, a run of moves, release. The default brush is
        # a black disc, so a dark band appears along the path and nowhere else.
        run(env, "xdotool", "mousemove", "750", "300")
        run(env, "xdotool", "mousedown", "1")
        for i in range(1, 31):
            run(env, "xdotool", "mousemove", str(750 + i * 12), str(300 + i * 10))
        run(env, "xdotool", "mouseup", "1")

        def stroke_seen():
            img = screenshot(env, shot)
            on_path = [img.getpixel((750 + i * 12, 300 + i * 10)) for i in range(2, 29)]
            dark = sum(1 for p in on_path if max(p) < 60)
            return dark >= len(on_path) - 1 and share_of(img, (255, 255, 255), (1000, 220, 1200, 320)) > 0.99
        wait_for("the stroke on screen", stroke_seen)

        # A rectangle selection with the mouse: the seventh tool ("Rect alpha"), a drag below the
        # stroke. The title says alpha is on and the marquee runs round the box.
        y, left, right = wait_for("the tool buttons", lambda: tool_buttons(screenshot(env, shot)))[6]
        run(env, "xdotool", "mousemove", str((left + right) // 2), str(y + 3), "click", "1")
        run(env, "xdotool", "mousemove", "780", "640")
        run(env, "xdotool", "mousedown", "1")
        for i in range(1, 11):
            run(env, "xdotool", "mousemove", str(780 + i * 37), str(640 + i * 6))
        run(env, "xdotool", "mouseup", "1")
        wait_for("the alpha title", lambda: title_starting(env, "Project Kelpwick  (Main)  (Alpha)"))

        def marquee_seen():
            img = screenshot(env, shot)
            def marked(y):
                edge = [img.getpixel((x, y)) for x in range(800, 1130)]
                return sum(1 for p in edge if max(p) < 200) > len(edge) // 4
            return any(marked(y) for y in range(636, 645)) and share_of(img, (255, 255, 255), (800, 660, 1130, 690)) > 0.99
        wait_for("the marquee round the selection", marquee_seen)

        # A line with the linear tool (key v) inside the selection.
        run(env, "xdotool", "key", "v")
        run(env, "xdotool", "mousemove", "800", "675")
        run(env, "xdotool", "mousedown", "1")
        for i in range(1, 9):
            run(env, "xdotool", "mousemove", str(800 + i * 40), "675")
        run(env, "xdotool", "mouseup", "1")

        def line_seen():
            img = screenshot(env, shot)
            on_line = [img.getpixel((x, 675)) for x in range(820, 1100, 10)]
            return sum(1 for p in on_line if max(p) < 60) >= len(on_line) - 1
        wait_for("the line on screen", line_seen)


        # Ctrl + wheel over a point of the stroke: 200 %, the point stays under the
        # cursor and the stroke is twice as wide (a pixel 7 off its middle turns dark).
        on, off = (930, 450), (926, 455)
        img = screenshot(env, shot)
        assert max(img.getpixel(on)) < 60 and min(img.getpixel(off)) > 200, (img.getpixel(on), img.getpixel(off))
        run(env, "xdotool", "mousemove", str(on[0]), str(on[1]))
        run(env, "xdotool", "keydown", "ctrl", "click", "4", "keyup", "ctrl")

        def zoomed():
            img = screenshot(env, shot)
            return max(img.getpixel(on)) < 60 and max(img.getpixel(off)) < 60
        wait_for("the stroke zoomed about the cursor", zoomed)

        # The middle button drags the view: the point under the hand follows it.
        run(env, "xdotool", "mousedown", "2")
        for x in range(910, 829, -20):
            run(env, "xdotool", "mousemove", str(x), str(on[1]))
        run(env, "xdotool", "mouseup", "2")
        wait_for("the view dragged", lambda: max(screenshot(env, shot).getpixel((830, 450))) < 60)

        assert app.poll() is None, "the program ended by itself"
        print("e2e: size dialog answered, canvas white, j/u change it, title follows, a stroke, a selection and a "
              "line show, ctrl + wheel zooms about the cursor, the middle button drags")
    finally:
        app.terminate()
        try:
            out, _ = app.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            app.kill()
            out, _ = app.communicate()
        if out:
            sys.stdout.write(out.decode(errors="replace")[-4000:])
        xvfb.terminate()
        xvfb.wait()


if __name__ == "__main__":
    main()
