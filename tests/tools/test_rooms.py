#!/usr/bin/env python3
"""Tests of what the table of the rooms does besides tools/check: CMake does not
configure what it does not allow, and tools/rooms draws what there is."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
import bad_rooms  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]

# Only what Rooms.cmake needs to know of a compiler.
PROJECT = f"""cmake_minimum_required(VERSION 3.21)
set(CMAKE_C_COMPILER_WORKS ON)
project(Rooms LANGUAGES C)
include("{ROOT}/cmake/Rooms.cmake")
kolm_read_rooms("${{CMAKE_CURRENT_SOURCE_DIR}}/cmake/rooms.txt")
foreach(room IN LISTS KOLM_ROOMS)
  if(EXISTS "${{CMAKE_CURRENT_SOURCE_DIR}}/${{room}}/CMakeLists.txt")
    add_subdirectory(${{room}})
  endif()
endforeach()
kolm_check_arrows()
"""


def library(*linked, kind="STATIC a.c", scope="PUBLIC"):
    """The CMakeLists.txt of a room called ROOM."""
    links = f"target_link_libraries(kolm_ROOM {scope} {' '.join(linked)})\n" if linked else ""
    return f"add_library(kolm_ROOM {kind})\n{links}"


class RoomsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="kolm 中 文 & é ")
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.write("cmake/rooms.txt", bad_rooms.ROOMS)

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, "utf-8")

    def configure(self, **rooms):
        """What CMake has against these rooms; empty if nothing."""
        self.write("CMakeLists.txt", PROJECT)
        for room, text in rooms.items():
            self.write(f"{room}/a.c", "")
            self.write(f"{room}/CMakeLists.txt", text.replace("ROOM", room))
        run = subprocess.run(["cmake", "-S", self.root, "-B", self.root / "build"],
                             stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertEqual(run.returncode != 0, "CMake Error" in run.stderr, run.stderr)
        return " ".join(run.stderr.split())

    def test_allowed_arrows_configure(self):
        self.assertEqual(self.configure(base=library(), pc=library("kolm_base", "m"),
                                        ui=library("kolm_pc", "kolm_base")), "")

    def test_an_arrow_to_the_side_does_not_configure(self):
        self.assertIn("kolm_ui links kolm_controller, but cmake/rooms.txt lets ui/ not use "
                      "controller/: offer a callback",
                      self.configure(controller=library(), ui=library("kolm_controller")))

    def test_an_arrow_up_does_not_configure(self):
        self.assertIn("lets base/ not use link/",
                      self.configure(base=library("kolm_link"), link=library()))

    def test_a_hidden_arrow_does_not_configure_either(self):
        self.assertIn("lets link/ not use config/",
                      self.configure(config=library(), link=library("kolm_config", scope="PRIVATE")))

    def test_a_program_of_a_room_is_held_to_the_table(self):
        program = library() + "add_executable(tool a.c)\ntarget_link_libraries(tool kolm_config)\n"
        self.assertIn("tool links kolm_config, but cmake/rooms.txt lets link/ not use config/",
                      self.configure(config=library(), link=program))

    def test_what_holds_no_code_only_passes_on(self):
        self.assertEqual(self.configure(
            simpc=library(), pc=library("kolm_simpc", kind="INTERFACE", scope="INTERFACE")), "")

    def test_a_row_that_goes_up_does_not_configure(self):
        self.write("cmake/rooms.txt", bad_rooms.ROOMS.replace("pc: base", "pc: link base"))
        self.assertIn("may only use rooms that stand further down, not link/", self.configure())

    def test_a_row_that_cannot_be_read_does_not_configure(self):
        self.write("cmake/rooms.txt", bad_rooms.ROOMS.replace("app:", "app ="))
        self.assertIn("this is no row of the table: app = ui", self.configure())

    def rooms(self, *arguments):
        return subprocess.run([sys.executable, ROOT / "tools" / "rooms", "--root", self.root,
                               *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True)

    def test_the_picture_is_drawn_from_the_includes(self):
        self.write("app/a.cpp", '#include "ui/a.h"\n#include "app/b.h"\n#include "link/a.h"\n')
        self.write("link/a.h", '#include "base/a.h"\n#include "pc/a.h"\n')
        self.write("tests/a.cpp", '#include "ui/a.h"\n')
        self.assertEqual(self.rooms().stdout, "```mermaid\ngraph TD\n    app --> ui\n"
                                              "    app --> link\n    link --> pc\n```\n")

    def test_the_picture_is_put_between_its_marks(self):
        self.write("link/a.h", '#include "pc/a.h"\n')
        page = f"# A\n\n{bad_rooms.PICTURE}\nÉnd\n"
        self.write("ARCHITECTURE.md", page.replace("link --> pc", "link --> simpc"))
        self.assertEqual(self.rooms("--write").returncode, 0)
        self.assertEqual((self.root / "ARCHITECTURE.md").read_text("utf-8"), page)

    def test_a_page_without_marks_is_left_alone(self):
        self.write("ARCHITECTURE.md", "# A\n")
        self.assertEqual(self.rooms("--write").returncode, 2)
        self.assertEqual((self.root / "ARCHITECTURE.md").read_text("utf-8"), "# A\n")


if __name__ == "__main__":
    unittest.main(verbosity=1)
