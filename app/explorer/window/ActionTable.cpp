#include "app/explorer/window/ActionTable.h"

namespace runsieve::app {

std::vector<ActionEntry> const& actionTable()
{
  using Kind = ActionEntry::Kind;
  static const std::vector<ActionEntry> table = {
      {"file.open", "&File", "&Open...", "Ctrl+O", "Open a file with a scan, or a sieve", Kind::Plain, true},
      {"file.folder", "&File", "Open &folder...", "Ctrl+Shift+O", "Open a folder with a file for each run"},
      {"file.example", "&File", "Try the &example", "", "Open a simulated scan to try things on"},
      {"file.reread", "&File", "&Reread", "F5", "Read the file again and keep gates and view"},
      {"file.reading", "&File", "How the file was rea&d...", "",
       "What the file was taken for, guessed and dropped", Kind::Plain, false, true},
      {"file.save", "&File", "&Save session", "Ctrl+S", "Save gates, sets and view as a sieve file",
       Kind::Plain, true},
      {"file.saveas", "&File", "Save session &as...", "Ctrl+Shift+S",
       "Save gates, sets and view in another sieve file", Kind::Plain, false, true},
      {"file.figure", "&File", "Export fi&gure...", "Ctrl+E", "Make a picture for a paper: PNG, SVG or PDF",
       Kind::Plain, true},
      {"file.runs", "&File", "Export passing r&uns...", "Ctrl+Shift+E", "Write the passing runs as a scan"},
      {"file.plot", "&File", "Save p&lot...", "", "Save scan and selection as a stored plot (.rsd)"},
      {"file.command", "&File", "&Copy as command", "Ctrl+Shift+C",
       "Copy the shell command that makes this table and this picture", Kind::Plain, false, true},
      {"file.window", "&File", "&New window", "Ctrl+N", "Open another window, for another scan"},
      {"file.close", "&File", "Close &window", "Ctrl+W", "Close this window"},
      {"file.quit", "&File", "&Quit", "Ctrl+Q", "Close all windows"},

      {"edit.undo", "&Edit", "&Undo", "Ctrl+Z", "Take the last change back", Kind::Plain, true},
      {"edit.redo", "&Edit", "&Redo", "Ctrl+Shift+Z; Ctrl+Y", "Do again what was taken back", Kind::Plain,
       true, true},
      {"edit.commands", "&Edit", "&Find a command...", "Ctrl+Shift+P", "Search all commands by their names"},

      {"tool.gate", "&Gates", "&Draw gates", "G", "Drag over places that runs must pass through",
       Kind::Choice, true},
      {"tool.pan", "&Gates", "&Pan", "P", "Drag the chart", Kind::Choice, true},
      {"tool.zoom", "&Gates", "&Zoom into a rectangle", "Z", "Drag over the part to look at", Kind::Choice,
       true, true},
      {"gate.new", "&Gates", "&New gate...", "Ctrl+G", "Type a gate"},
      {"gate.edit", "&Gates", "&Edit gate...", "F2", "Change the selected gate by its numbers"},
      {"gate.toggle", "&Gates", "Switch gate &on or off", "Ctrl+T",
       "Let the selected gate ask for something or not"},
      {"gate.negate", "&Gates", "&Invert gate", "Ctrl+I", "Let through exactly the other runs"},
      {"gate.delete", "&Gates", "De&lete gate", "Del", "Take the selected gate away"},
      {"gate.clear", "&Gates", "Delete &all gates", "Ctrl+L", "Take all gates away", Kind::Plain, false,
       true},
      {"join.all", "&Gates", "Pass e&very gate", "", "A run must pass every gate", Kind::Choice},
      {"join.any", "&Gates", "Pass any ga&te", "", "A run must pass one of the gates", Kind::Choice},

      {"look.density", "&View", "Runs as &density", "", "Shades by the number of runs", Kind::Choice},
      {"look.lines", "&View", "Runs as &lines", "", "Lines over lines in one colour", Kind::Choice},
      {"look.bands", "&View", "Runs as &bands", "", "Median, quartiles, and 5 to 95 % of the runs",
       Kind::Choice, false, true},
      {"focus.all", "&View", "Show all &runs", "Ctrl+1", "The other runs as they are", Kind::Choice},
      {"focus.faded", "&View", "&Fade the other runs", "Ctrl+2", "The other runs as a pale ground",
       Kind::Choice},
      {"focus.hidden", "&View", "&Hide the other runs", "Ctrl+3", "The passing runs alone", Kind::Choice,
       false, true},
      {"view.addoutput", "&View", "&Add an output", "Ctrl+D", "One more chart, on the same time axis",
       Kind::Plain, true},
      {"view.limits", "&View", "A&xis limits...", "", "Type the limits of the axes"},
      {"zoom.reset", "&View", "Show &everything", "Ctrl+0", "Zoom out to all times and values", Kind::Plain,
       true},
      {"zoom.back", "&View", "Zoom bac&k", "Alt+Left", "What was shown before"},
      {"zoom.forward", "&View", "Zoom f&orward", "Alt+Right", "What was shown before going back", Kind::Plain,
       false, true},
      {"pins.clear", "&View", "&Unpin all runs", "Ctrl+U", "Forget the runs that were clicked"},
      {"view.composite", "&View", "&Composite view...", "",
       "Runs and parameters in one picture, as render draws them"},
      {"theme.desktop", "&View", "Colours of the desk&top", "", "Light or dark as the desktop is",
       Kind::Choice},
      {"theme.light", "&View", "L&ight colours", "", "Dark ink on a light ground", Kind::Choice},
      {"theme.dark", "&View", "Dark colour&s", "", "Light ink on a dark ground", Kind::Choice, false, true},
      {"view.docks", "&View", "Restore the la&yout", "", "Put all panes where they were at first"},

      {"parameters.curves", "&Parameters", "&Cumulative curves", "", "Shares of the runs up to a value",
       Kind::Choice},
      {"parameters.densities", "&Parameters", "&Densities", "", "Estimated on the axis that is shown",
       Kind::Choice},
      {"parameters.scatter", "&Parameters", "&Scatter", "",
       "Values against the last value of the first output", Kind::Choice, false, true},
      {"method.edit", "&Parameters", "Significance and &method...", "",
       "Thresholds, and how p-values are adjusted"},

      {"set.keep", "&Sets", "&Keep passing runs...", "Ctrl+K", "Give the passing runs a name and a colour"},
      {"set.type", "&Sets", "&Type runs...", "", "A set of the runs 3,5,10-15"},
      {"set.file", "&Sets", "Set from &file...", "", "A set of the runs that a file lists, one in each line"},
      {"set.cluster", "&Sets", "&Group runs by shape...", "", "Clusters of runs of like shape, as sets"},
      {"set.failed", "&Sets", "Runs that are not &complete", "", "A set of short and failed runs"},

      {"help.guide", "&Help", "User &guide", "F1", "How things are done"},
      {"help.keys", "&Help", "&Keys and mouse", "", "All shortcuts, and what the mouse does"},
      {"help.about", "&Help", "&About Runsieve", "", "Versions and licences"},
  };
  return table;
}

} // namespace runsieve::app
