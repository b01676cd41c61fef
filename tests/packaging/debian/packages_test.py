#!/usr/bin/env python3
"""Checks the Debian packages of a build: their files, dependencies and control files, and the libraries in them."""

import argparse
import gzip
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

options = argparse.Namespace()


def output_of(*command):
    return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE).stdout


class Package:
    """One .deb file."""

    def __init__(self, name):
        self.name = name
        self.path = next(options.packages.glob(f"{name}_*.deb"))

    def field(self, name):
        return output_of("dpkg-deb", "--field", self.path, name).strip()

    def dependencies(self):
        """The version condition, or None, by package name."""
        parts = (re.fullmatch(r"(\S+)(?: \((.*)\))?", part) for part in self.field("Depends").split(", "))
        return {part[1]: part[2] for part in parts}

    def entries(self):
        """Mode, owner and path of all its files and folders."""
        for line in output_of("dpkg-deb", "--contents", self.path).splitlines():
            mode, owner, _, _, _, path = line.split(maxsplit=5)
            yield mode, owner, path.removeprefix("./")

    def files(self):
        return sorted(path for mode, _, path in self.entries() if not mode.startswith("d"))

    def control_files(self):
        """The texts of the control files by name."""
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run(["dpkg-deb", "--control", self.path, folder], check=True)
            return {file.name: file.read_text(encoding="utf-8") for file in Path(folder).iterdir()}


def listed(name):
    lines = (options.files / f"{name}_files.txt").read_text(encoding="utf-8").splitlines()
    return sorted(line for line in lines if line)


class Packages(unittest.TestCase):
    def setUp(self):
        self.runtime = Package(f"libgleigem{options.soversion}")
        self.development = Package("libgleigem-dev")
        self.documentation = Package("gleigem-doc")
        self.packages = [self.runtime, self.development, self.documentation]
        self.programs = []
        if options.tools:
            self.tools = Package("gleigem-tools")
            self.packages.append(self.tools)
            self.programs.append(options.unpacked / "usr/bin/import_explorer")
        self.libraries = [file for file in (options.unpacked / "usr/lib").rglob("*.so.*") if not file.is_symlink()]

    def test_there_are_no_others(self):
        self.assertEqual({package.path for package in self.packages}, set(options.packages.glob("*.deb")))

    def test_hold_these_files_and_no_other(self):
        self.assertEqual(self.runtime.files(), listed("runtime"))
        self.assertEqual(self.development.files(), listed("development"))
        if options.tools:
            self.assertEqual(self.tools.files(), listed("tools"))

    def test_belong_to_root_and_are_written_by_nobody_else(self):
        for package in self.packages:
            for mode, owner, path in package.entries():
                file = "-rwxr-xr-x" if path.startswith("usr/bin/") else "-rw-r--r--"
                expected = {"d": "drwxr-xr-x", "l": "lrwxrwxrwx", "-": file}[mode[0]]
                self.assertEqual((mode, owner), (expected, "root/root"), path)

    def test_describe_themselves(self):
        for package, section in zip(self.packages, ("libs", "libdevel", "doc", "devel")):
            self.assertEqual(package.field("Version"), options.version)
            self.assertEqual(package.field("Section"), section)
            self.assertEqual(package.field("Source"), "gleigem")
            self.assertRegex(package.field("Maintainer"), r"^[^<>]+ <[^<>@]+@[^<>@]+>$")
            self.assertRegex(package.field("Description"), r"^meaning of a language's import command, .*\n Turns ")

    def test_runtime_depends_on_the_libraries_that_it_needs(self):
        names = {re.sub(r"^(libicu)\d+$", r"\1", name) for name in self.runtime.dependencies()}
        self.assertLessEqual({"libc6", "libicu", "libstdc++6"}, names)
        self.assertLessEqual(names, {"libc6", "libgcc-s1", "libicu", "libstdc++6"})

    def test_development_depends_on_that_runtime_and_what_its_headers_include(self):
        self.assertEqual(self.development.dependencies(), {
            self.runtime.name: f"= {options.version}",
            "librange-v3-dev": None,
        })

    def test_tools_depend_on_that_runtime_and_the_libraries_that_they_need(self):
        if options.tools:
            dependencies = self.tools.dependencies()
            self.assertEqual(dependencies[self.runtime.name], f"= {options.version}")
            self.assertLessEqual({"libc6", "libstdc++6"}, set(dependencies))

    def test_runtime_has_the_linker_cache_renewed_and_runs_nothing_itself(self):
        texts = self.runtime.control_files()
        self.assertEqual(set(texts), {"control", "md5sums", "shlibs", "triggers"})
        self.assertEqual(texts["triggers"], "activate-noawait ldconfig\n")
        self.assertEqual(texts["shlibs"].splitlines(), [
            f"{library} {options.soversion} {self.runtime.name} (>= {options.version})"
            for library in ("libgleigem", "libgleigem_platform")
        ])

    def test_the_others_run_nothing(self):
        for package in self.packages[1:]:
            self.assertEqual(set(package.control_files()), {"control", "md5sums"})

    def test_documentation_serves_every_machine_and_holds_what_its_pages_refer_to(self):
        self.assertEqual(self.documentation.field("Architecture"), "all")
        folder = "usr/share/doc/gleigem-doc"
        files = set(self.documentation.files())
        self.assertLessEqual({f"{folder}/{page}" for page in ("README.md", "docs/rules.md")}, files)
        for page in (options.unpacked / folder).rglob("*.md"):
            for example in re.findall(r"\]\((?:\.\./)*(examples/[^)#]+)\)", page.read_text(encoding="utf-8")):
                self.assertTrue((options.unpacked / folder / example).exists(), f"{page} refers to {example}")
        self.assertEqual(f"{folder}/reference/index.html" in files, options.reference)

    def test_have_the_changelog_of_this_version(self):
        for package in self.packages:
            path = options.unpacked / f"usr/share/doc/{package.name}/changelog.gz"
            text = gzip.decompress(path.read_bytes()).decode()
            self.assertTrue(text.startswith(f"gleigem ({options.version}) "))
            self.assertIn("  * Added: The parser of `import` commands", text)
            parsed = subprocess.run(["dpkg-parsechangelog", "--file", "-"], input=text, check=True, text=True,
                                    capture_output=True)
            self.assertEqual(parsed.stderr, "")
            self.assertIn(f"Version: {options.version}\n", parsed.stdout)

    def test_debug_symbols_are_those_of_what_is_packed(self):
        packed = "".join(output_of("dpkg-deb", "--contents", symbols) for symbols in options.packages.glob("*.ddeb"))
        for file in self.libraries + self.programs:
            notes = output_of(options.readelf, "--notes", file)
            build = re.search("Build ID: ([0-9a-f]{2})([0-9a-f]+)", notes)
            symbols = f"usr/lib/debug/.build-id/{build[1]}/{build[2]}.debug"
            self.assertEqual(symbols in packed, options.debug_symbols, file)

    @unittest.skipUnless(shutil.which("lintian"), "lintian is not here")
    def test_lintian_finds_no_error(self):
        # The project has no email address.
        subprocess.run(["lintian", "--allow-root", "--fail-on", "error",
                        "--suppress-tags", "bogus-mail-host,bogus-mail-host-in-debian-changelog",
                        *(package.path for package in self.packages)], check=True)

    def test_libraries_and_programs_have_no_search_path_and_are_stripped(self):
        self.assertEqual(len(self.libraries), 2)
        for file in self.libraries + self.programs:
            self.assertNotRegex(output_of(options.readelf, "--dynamic", file), "RPATH|RUNPATH")
            sections = output_of(options.readelf, "--sections", "--wide", file)
            self.assertIn(".dynsym", sections)
            self.assertNotRegex(sections, r"\.(symtab|debug_info)\b")

    def test_no_file_remembers_the_build_tree(self):
        for file in options.unpacked.rglob("*"):
            if file.is_file():
                self.assertNotIn(str(options.build_dir).encode(), file.read_bytes(), file)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("packages", "unpacked", "files", "build-dir"):
        parser.add_argument(f"--{name}", type=Path, required=True)
    for name in ("version", "soversion", "readelf"):
        parser.add_argument(f"--{name}", required=True)
    for name in ("debug-symbols", "reference", "tools"):
        parser.add_argument(f"--{name}", action="store_true")
    parser.parse_args(namespace=options)
    unittest.main(argv=sys.argv[:1])


if __name__ == "__main__":
    main()
