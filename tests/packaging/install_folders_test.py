#!/usr/bin/env python3
# SPDX-License-Identifier: BSL-1.0
"""Installs into folders that packagers choose, and checks where the files are.

    install_folders_test.py SOURCE BUILD GENERATOR CXX

The libraries are copied from BUILD into build trees that are only configured, because they do not depend on the
installation folders.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE, BUILD, GENERATOR, CXX = sys.argv[1:5]
del sys.argv[1:5]


def run(*command, **options):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **options)


class InstallFolders(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        # Home folders can have blanks and letters beyond ASCII in their names.
        self.work = Path(folder.name).resolve() / "a folder für alles"
        self.work.mkdir()

    def configured(self, *options):
        """A build tree configured with these options, with the finished libraries."""
        tree = self.work / "build"
        shutil.rmtree(tree, ignore_errors=True)
        run("cmake", "-S", SOURCE, "-B", tree, "-G", GENERATOR, f"-DCMAKE_CXX_COMPILER={CXX}",
            "-DCMAKE_BUILD_WITH_INSTALL_RPATH=ON", "-DGLEIGEM_BUILD_TESTS=OFF", "-DGLEIGEM_BUILD_EXAMPLES=OFF",
            "-DGLEIGEM_BUILD_TOOLS=OFF", *options, cwd=self.work)  # fmt: skip
        for part in ("import", "platform", "host_testing"):
            for library in (*Path(BUILD, part).glob("libgleigem*.so*"), *Path(BUILD, part).glob("libgleigem*.a")):
                shutil.copy(library, tree / part, follow_symlinks=False)
        return tree

    def installed(self, tree, *options, **environment):
        run("cmake", "--install", tree, *options, env={**os.environ, **environment}, cwd=self.work)

    def files_of(self, folder):
        return {path.relative_to(folder).as_posix() for path in folder.rglob("*") if not path.is_dir()}

    def check_files(self, folder, libdir, prefix):
        """Checks that all files in a folder are below its libdir (libraries) or prefix (the rest)."""
        files = self.files_of(folder)
        self.assertIn(f"{prefix}include/gleigem/import/import.hpp", files)
        for name in ("libgleigem.so", "pkgconfig/gleigem.pc", "cmake/gleigem/gleigemConfig.cmake"):
            self.assertIn(f"{libdir}/{name}", files)
        outside = {name for name in files if not name.startswith((prefix, f"{libdir}/"))}
        self.assertEqual(outside, set())

    def check_flags(self, libdir, include):
        """Checks that a shell reads the output of pkg-config as the expected folders."""
        environment = {**os.environ, "PKG_CONFIG_PATH": str(libdir / "pkgconfig")}
        command = 'eval set -- $(pkg-config --cflags --libs gleigem); printf "%s\\n" "$@"'
        flags = run("sh", "-c", command, env=environment).stdout.splitlines()
        self.assertEqual([flag[:2] for flag in flags[:2]], ["-I", "-L"], flags)
        self.assertEqual([Path(flag[2:]).resolve() for flag in flags[:2]], [include / "gleigem", libdir])
        self.assertEqual(flags[2:], ["-lgleigem", "-lgleigem_platform"])

    def test_relative_library_folders_are_below_a_prefix_chosen_at_installation(self):
        for libdir in ("lib", "lib64"):
            prefix = self.work / f"prefix of {libdir}"
            self.installed(self.configured(f"-DCMAKE_INSTALL_LIBDIR={libdir}"), "--prefix", prefix)
            self.check_files(prefix, libdir, "")
            printers = {file for file in self.files_of(prefix) if file.endswith("-gdb.py")}
            self.assertEqual(len(printers), 1)
            self.assertTrue(printers.pop().startswith(f"share/gdb/auto-load{prefix}/{libdir}/libgleigem.so"))
            self.check_flags(prefix / libdir, prefix / "include")

    def test_nothing_lands_outside_of_destdir(self):
        stage = self.work / "stage"
        tree = self.configured("-DCMAKE_INSTALL_PREFIX=/usr", "-DCMAKE_INSTALL_LIBDIR=lib")
        self.installed(tree, DESTDIR=str(stage))
        self.check_files(stage, "usr/lib", "usr/")
        self.assertEqual({path.name for path in self.work.iterdir()}, {"build", "stage"})

    def test_absolute_folders_are_taken_as_they_are(self):
        libdir, include = self.work / "libraries", self.work / "headers"
        tree = self.configured(f"-DCMAKE_INSTALL_LIBDIR={libdir}", f"-DCMAKE_INSTALL_INCLUDEDIR={include}",
                               f"-DCMAKE_INSTALL_PREFIX={self.work / 'prefix'}")  # fmt: skip
        self.installed(tree)
        self.assertIn("libgleigem.so", self.files_of(libdir))
        self.assertIn("gleigem/import/import.hpp", self.files_of(include))
        (printers,) = self.files_of(self.work / "prefix")
        self.assertTrue(printers.startswith(f"share/gdb/auto-load{libdir}/libgleigem.so"), printers)
        self.check_flags(libdir, include)

    def test_a_parent_may_export_a_library_that_links_this_one(self):
        parent = Path(__file__).parent / "exporting_parent"
        run("cmake", "-S", parent, "-B", self.work / "parent", "-G", GENERATOR, f"-DCMAKE_CXX_COMPILER={CXX}",
            f"-DGLEIGEM_SOURCE_DIR={SOURCE}")  # fmt: skip


if __name__ == "__main__":
    unittest.main()
