#!/usr/bin/env python3
"""The program as a user gets it: installed into a staging folder, its desktop
entry and metainfo validated, its command line answered, and the installed
binary started under its own Xvfb server with a picture named on the command
line, which must show on the canvas."""

import os
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from e2e_window import run, screenshot, share_of, start_xvfb, title_starting, wait_for, window_names  # noqa: E402

BUILD = sys.argv[1]
APP_ID = "io.github.kelpwick.Kelpwick"


def install(stage):
    subprocess.run(["cmake", "--install", BUILD, "--prefix", stage], check=True, capture_output=True)
    link = os.path.join(stage, "bin", "kelpwick")
    assert os.path.islink(link) and os.readlink(link) == "../lib/kelpwick/kelpwick", os.readlink(link)
    assert os.access(os.path.join(stage, "lib", "kelpwick", "kelpwick"), os.X_OK)
    for name in ("Def_Res.txt", "def_Well.wl", "Def_Gradient.grd", "Kelhelp.html"):
        assert os.path.isfile(os.path.join(stage, "share", "kelpwick", name)), name
    share = os.path.join(stage, "share")
    for rel in (f"applications/{APP_ID}.desktop", f"metainfo/{APP_ID}.metainfo.xml", "man/man1/kelpwick.1",
                f"icons/hicolor/16x16/apps/{APP_ID}.png", f"icons/hicolor/256x256/apps/{APP_ID}.png"):
        assert os.path.isfile(os.path.join(share, rel)), rel
    return link, share


def validate(share):
    out = subprocess.run(["desktop-file-validate", f"{share}/applications/{APP_ID}.desktop"],
                         capture_output=True, text=True)
    assert out.returncode == 0 and not out.stdout.strip(), out.stdout + out.stderr
    out = subprocess.run(["appstreamcli", "validate", "--no-net", f"{share}/metainfo/{APP_ID}.metainfo.xml"],
                         capture_output=True, text=True)
    assert out.returncode == 0, out.stdout + out.stderr


def command_line(program, env):
    out = subprocess.run([program, "--version"], capture_output=True, text=True, env=env)
    assert out.returncode == 0 and out.stdout.startswith("kelpwick "), out
    out = subprocess.run([program, "--help"], capture_output=True, text=True, env=env)
    assert out.returncode == 0 and "Usage: kelpwick" in out.stdout, out
    out = subprocess.run([program, "-platform", "offscreen", "--no-such-option"], capture_output=True, text=True,
                         env=env)
    assert out.returncode == 2 and "--no-such-option" in out.stderr, out


def red_targa(path, w=1800, h=1200):
    """A 32-bit bottom-left Targa, all red and opaque."""
    header = bytes([0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, w & 255, w >> 8, h & 255, h >> 8, 32, 8])
    with open(path, "wb") as f:
        f.write(header + bytes([0, 0, 255, 255]) * (w * h))


def opens_named_file(program, tmp):
    xvfb, display = start_xvfb()
    env = dict(os.environ, DISPLAY=display, HOME=tmp, XDG_CONFIG_HOME=os.path.join(tmp, "config"),
               ASAN_OPTIONS="detect_leaks=0")
    env.pop("QT_QPA_PLATFORM", None)
    picture = os.path.join(tmp, "red picture.tga")
    red_targa(picture)
    app = subprocess.Popen([program, picture], env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    try:
        wait_for("the size dialog", lambda: "Buffer size" in window_names(env))
        run(env, "xdotool", "key", "Return")
        # A 32-bit picture switches alpha on: the title says so once the load is done.
        wait_for("the loaded picture's title", lambda: title_starting(env, "Project Kelpwick  (Main)  (Alpha)"))
        shot = os.path.join(tmp, "shot.png")
        wait_for("a red canvas", lambda: share_of(screenshot(env, shot), (255, 0, 0), (700, 200, 1200, 700)) > 0.95)
        assert app.poll() is None, "the installed program ended by itself"
    finally:
        app.terminate()
        try:
            app.communicate(timeout=10)
        except subprocess.TimeoutExpired:
            app.kill()
        xvfb.terminate()
        xvfb.wait()


def main():
    tmp = tempfile.mkdtemp(prefix="kelpwick-install-")
    try:
        program, share = install(os.path.join(tmp, "stage"))
        validate(share)
        command_line(program, dict(os.environ, ASAN_OPTIONS="detect_leaks=0"))
        opens_named_file(program, tmp)
        print("install: layout, desktop entry, metainfo, command line, a named file opened by the installed program")
    finally:
        shutil.rmtree(tmp, ignore_errors=True)


if __name__ == "__main__":
    main()
