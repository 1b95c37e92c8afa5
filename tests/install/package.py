#!/usr/bin/env python3
"""The Debian package: cpack makes kelpwick_<version>_amd64.deb from the build
folder; its control fields and its contents are what an installed system needs."""

import os
import re
import shutil
import subprocess
import sys
import tempfile

BUILD = sys.argv[1]
APP_ID = "io.github.kelpwick.Kelpwick"


def main():
    out_dir = tempfile.mkdtemp(prefix="kelpwick-deb-")
    try:
        subprocess.run(["cpack", "--config", os.path.join(BUILD, "CPackConfig.cmake"), "-G", "DEB", "-B", out_dir],
                       check=True, capture_output=True)
        debs = [f for f in os.listdir(out_dir) if f.endswith(".deb")]
        assert len(debs) == 1 and re.fullmatch(r"kelpwick_\d+\.\d+\.\d+_amd64\.deb", debs[0]), debs
        deb = os.path.join(out_dir, debs[0])

        def field(name):
            return subprocess.run(["dpkg-deb", "-f", deb, name], capture_output=True, text=True).stdout.strip()
        assert field("Package") == "kelpwick"
        assert field("Architecture") == "amd64"
        assert "imagemagick" in field("Recommends")
        depends = field("Depends")
        for lib in ("libqt6widgets6", "libqt6gui6", "libqt6core6", "libc6", "libstdc++6"):
            assert lib in depends, depends

        listing = subprocess.run(["dpkg-deb", "-c", deb], capture_output=True, text=True, check=True).stdout
        for path in ("./usr/lib/kelpwick/kelpwick", "./usr/bin/kelpwick -> ../lib/kelpwick/kelpwick",
                     "./usr/share/kelpwick/Def_Res.txt", "./usr/share/kelpwick/Kelhelp.html",
                     f"./usr/share/applications/{APP_ID}.desktop", f"./usr/share/metainfo/{APP_ID}.metainfo.xml",
                     f"./usr/share/icons/hicolor/48x48/apps/{APP_ID}.png", "./usr/share/man/man1/kelpwick.1"):
            assert path in listing, path
        for line in listing.splitlines():
            assert "/build" not in line and "test_" not in line, line  # nothing of the build leaks in
        print("package:", debs[0], "Depends:", depends)
    finally:
        shutil.rmtree(out_dir, ignore_errors=True)


if __name__ == "__main__":
    main()
