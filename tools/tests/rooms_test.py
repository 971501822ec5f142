#!/usr/bin/env python3
"""Tests of check-rooms on small trees: what it must find, and what it must let pass."""
import importlib.machinery
import importlib.util
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True
TOOL = pathlib.Path(__file__).resolve().parents[1] / "check-rooms"
LOADER = importlib.machinery.SourceFileLoader("check_rooms", str(TOOL))
check_rooms = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_rooms", LOADER))
LOADER.exec_module(check_rooms)

ROOMS = """platform-core|| platform/core/Log.cpp
json|| json/Reader.cpp json/Reader.h
overlay-state|platform-core| widgets/Overlay.cpp widgets/Overlay.h
client-format|overlay-state| client/Format.cpp
client|json,client-format| client/Facade.cpp
screens|client| screens/List.cpp screens/List.qml
settings-panel|client| settings/Panel.cpp
"""
TREE = {file: "" for file in (
    "platform/core/Log.cpp", "platform/core/Log.h", "json/Reader.cpp", "json/Reader.h", "widgets/Overlay.cpp",
    "widgets/Overlay.h", "client/Format.cpp", "client/Format.h", "client/Facade.cpp", "client/Facade.h",
    "screens/List.cpp", "screens/List.h", "settings/Panel.cpp", "settings/Panel.h")}


class CheckRoomsTest(unittest.TestCase):
    def faults(self, rooms=ROOMS, **files):
        tree = TREE | {name.replace("__", "/") + ending: text for name, (ending, text) in files.items()}
        return list(check_rooms.faults(check_rooms.read_rooms(rooms), list(tree), tree.__getitem__))

    def test_what_may_be_included_passes(self):
        own = '#include "client/Facade.h"\n#include <string>\n#include "Facade.moc"\n'
        deep = '#include "json/Reader.h"\n  #  include "platform/core/Log.h"\n// #include "screens/List.h"\n'
        self.assertEqual(self.faults(client__Facade=(".cpp", own + deep), screens__List=(".h", deep)), [])

    def test_what_must_not_be_included_is_found(self):
        cases = (("client__Facade", ".cpp", '#include "screens/List.h"', "belongs to screens"),
                 ("screens__List", ".cpp", '#include "settings/Panel.h"', "belongs to settings-panel"),
                 ("client__Format", ".h", '#include "client/Facade.h"', "belongs to client"),
                 ("client__Facade", ".cpp", '#include "Facade.h"', "no room owns"),
                 ("client__Facade", ".cpp", '#include "client/Facade.cpp"\n#include "tests/support/X.h"', "no room owns"),
                 ("json__Reader", ".cpp", "#include <QString>", "must not know"),
                 ("client__Facade", ".h", "#include <QtQuick/QQuickItem>", "must not know"),
                 ("json__Lost", ".cpp", "", "no room lists it"),
                 ("client__Lost", ".h", "", "no room lists it"),  # two rooms live there
                 ("json__Alone", ".h", "#include <QString>", "must not know"))
        for name, ending, text, part in cases:
            with self.subTest(text or name):
                found = self.faults(**{name: (ending, text + "\n")})
                self.assertEqual(len(found), 1, found)
                self.assertIn(part, found[0])

    def test_rooms_out_of_order_are_found(self):
        for old, new, part in (("overlay-state|platform-core|", "overlay-state|platform-core,client|", "build on client"),
                               ("screens|client|", "screens|client,settings-panel|", "build on settings-panel"),
                               ("json|| ", "cellar|| ", "unknown room"),
                               ("client-format|overlay-state| ", "client-format|overlay-state| json/Reader.h ",
                                "more than one room")):
            with self.subTest(new):
                found = [fault for fault in self.faults(ROOMS.replace(old, new)) if part in fault]
                self.assertEqual(len(found), 1)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v", *sys.argv[1:]])
