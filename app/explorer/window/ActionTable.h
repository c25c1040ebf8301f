#pragma once

#include <cstdint>
#include <vector>

namespace runsieve::app {

/// What a user can do in the window: one entry makes the entry of the menu, the button of the toolbar, the
/// line of the command search and that of the list of shortcuts.
struct ActionEntry
{
  /// How an action behaves.
  enum class Kind : std::uint8_t
  {
    Plain,
    Switch, ///< on or off
    Choice  ///< one of its group
  };

  char const* id;       ///< "gate.delete"; what stands before the point groups choices
  char const* menu;     ///< "&Gates"; entries of one menu stand together
  char const* text;     ///< with a mnemonic; "..." if it asks for more
  char const* shortcut; ///< in Qt's portable text, several with "; " between; empty for none
  char const* hint;     ///< what it does, a sentence without a full stop
  Kind kind = Kind::Plain;
  bool inToolbar = false;
  bool endsGroup = false; ///< a line follows in the menu
};

/// All of them, in the order of the menus.
[[nodiscard]] std::vector<ActionEntry> const& actionTable();

} // namespace runsieve::app
