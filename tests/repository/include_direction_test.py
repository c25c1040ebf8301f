#!/usr/bin/env python3
"""Shows that include_direction.py finds bad includes and lets good ones pass."""

import pathlib
import tempfile
import unittest

from include_direction import BELOW, Layers, check

PUBLIC = ["records/Scan.h", "plot/Plot.h"]
QT_WIDGETS = ["QWidget", "qwidget.h"]


class IncludeDirectionTest(unittest.TestCase):
    def messages(self, files):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for name, text in {"runsieve/records/Scan.h": "", "runsieve/plot/Plot.h": "", **files}.items():
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text(text)
            return check(root, Layers(PUBLIC, QT_WIDGETS))[1]

    def assert_passes(self, name, include):
        self.assertEqual([], self.messages({name: f"#include {include}\n"}))

    def assert_refused(self, name, include, reason):
        self.assertEqual([f"{name}:1: {include}: {reason}"], self.messages({name: f"#include {include}\n"}))

    def test_arrows_that_point_down_pass(self):
        self.assert_passes("runsieve/items/Line.h", "<runsieve/records/Scan.h>")
        self.assert_passes("runsieve/items/Line.h", "<vtkPlotPoints.h>")
        self.assert_passes("runsieve/stats/Quartiles.cpp", "<runsieve/tables/Columns.h>")
        self.assert_passes("runsieve/styles/Scatter.cpp", "<runsieve/charts/Stage.h>")
        self.assert_passes("runsieve/plot/Redraw.cpp", "<runsieve/styles/Scatter.h>")
        self.assert_passes("runsieve/stats/Ks.h", "<runsieve/selection/Spans.h>")
        self.assert_passes("runsieve/stats/Ks.h", "<runsieve/runsieve_export.h>")
        self.assert_passes("runsieve/stats/Ks.cpp", "<vector>")
        self.assert_passes("runsieve/plot/Plot.h", "<QObject>")
        self.assert_passes("runsieve/widgets/View.cpp", "<QWidget>")
        self.assert_passes("runsieve/widgets/View.cpp", "<runsieve/plot/Plot.h>")
        self.assert_passes("app/main.cpp", "<runsieve/plot/Plot.h>")
        self.assert_passes("app/main.cpp", "<QWidget>")
        self.assert_passes("app/main.cpp", '"app/scan/Reader.h"')

    def test_records_know_nothing_of_the_rest(self):
        for name in ("Scan.cpp", "Time.h"):
            self.assert_refused(f"runsieve/records/{name}", "<runsieve/items/Line.h>",
                                "records includes only core/kernels, records")

    def test_no_room_below_knows_the_plot(self):
        for folder in set(BELOW) - {"plot", "widgets"}:
            for name in ("Room.h", "Room.cpp"):
                reason = f"{folder} includes only {', '.join(sorted(BELOW[folder] | {folder}))}"
                self.assert_refused(f"runsieve/{folder}/{name}", "<runsieve/plot/Plot.h>", reason)

    def test_no_folder_reaches_itself_through_others(self):
        def reached(folder):
            return BELOW[folder].union(*map(reached, BELOW[folder]))

        for folder in BELOW:
            self.assertNotIn(folder, reached(folder))

    def test_nobody_includes_widgets(self):
        self.assert_refused("runsieve/plot/Redraw.cpp", "<runsieve/widgets/View.h>",
                            f"plot includes only {', '.join(sorted(BELOW['plot'] | {'plot'}))}")

    def test_only_widgets_sees_qt_widgets(self):
        for include in ("<QWidget>", "<QtWidgets/QWidget>", "<qwidget.h>", "<QVTKOpenGLNativeWidget.h>"):
            self.assert_refused("runsieve/plot/Redraw.cpp", include, "only widgets includes Qt Widgets")

    def test_the_core_sees_neither_qt_nor_vtk(self):
        for include in ("<vtkChartXY.h>", "<vtkType.h>", "<QObject>", "<QtCore/QString>", "<QtGlobal>", "<qglobal.h>"):
            for name in ("kernels/Ks.cpp", "kernels/Ks.h", "scan/Scan.h"):
                self.assert_refused(f"runsieve/core/{name}", include, "the core includes neither Qt nor VTK")

    def test_folders_of_the_core_are_rooms_of_their_own(self):
        self.assert_passes("runsieve/core/gate/Gate.cpp", "<runsieve/core/scan/Scan.h>")
        self.assert_passes("runsieve/stats/Quartiles.cpp", "<runsieve/core/kernels/Ks.h>")
        self.assert_refused("runsieve/core/kernels/Ks.cpp", "<runsieve/core/scan/Scan.h>",
                            "core/kernels includes only core/kernels")
        self.assert_refused("runsieve/core/scan/Scan.cpp", "<runsieve/records/Scan.h>",
                            "core/scan includes only core/scan, core/text")

    def test_public_headers_include_public_headers_only(self):
        self.assert_refused("runsieve/plot/Plot.h", "<runsieve/plot/Palette.h>",
                            "a public header includes public headers only")

    def test_the_program_and_examples_see_public_headers_only(self):
        for folder in ("app", "examples"):
            for include in ("<runsieve/stats/Ks.h>", '"runsieve/stats/Ks.h"'):
                self.assert_refused(f"{folder}/main.cpp", include,
                                    f"{folder} includes public headers of the library only")

    def test_nothing_includes_what_uses_it(self):
        for include in ('"app/scan/Reader.h"', "<app/scan/Reader.h>", '"support/Picture.h"'):
            self.assert_refused("runsieve/plot/Redraw.cpp", include, "the library includes nothing of what uses it")
        self.assert_refused("app/main.cpp", '"tests/support/Picture.h"', "app includes nothing of tests")

    def test_relative_and_computed_includes_would_hide_their_arrow(self):
        self.assert_refused("runsieve/plot/Redraw.cpp", '"../widgets/View.h"',
                            "the library's own headers are included as <runsieve/...>")
        self.assertEqual(["runsieve/plot/Redraw.cpp:1: <HEADER>: a computed include hides its arrow"],
                         self.messages({"runsieve/plot/Redraw.cpp": "#include HEADER\n"}))

    def test_spacing_is_seen_through_and_comments_are_not_read(self):
        text = "/* one\n#include <runsieve/plot/Plot.h>\n*/\n// #include <runsieve/plot/Plot.h>\n"
        self.assertEqual([], self.messages({"runsieve/items/Line.h": text}))
        text += "  #  include<runsieve/plot/Plot.h> // why not\n"
        self.assertEqual(["runsieve/items/Line.h:5: <runsieve/plot/Plot.h>: items includes only core/coverage, core/kernels, core/parallel, items, records"], self.messages({"runsieve/items/Line.h": text}))

    def test_a_public_header_that_is_gone_is_reported(self):
        with tempfile.TemporaryDirectory() as folder:
            messages = check(pathlib.Path(folder), Layers(["plot/Gone.h"], QT_WIDGETS))[1]
        self.assertEqual(["public header plot/Gone.h does not exist"], messages)


if __name__ == "__main__":
    unittest.main()
