#pragma once

#include <runsieve/core/read/ReadOptions.h>

#include <QString>
#include <QStringList>

namespace runsieve::app {

/// Files that were opened last, the newest first, kept in the settings of the program.
class RecentFiles
{
public:
  static constexpr int most = 10;

  /// Those that exist.
  [[nodiscard]] static QStringList list();
  /// Puts a file in front. \param read how it was read
  static void add(QString const& path, ReadOptions const& read = {});
  /// How a file was read last, for reading it so again.
  [[nodiscard]] static ReadOptions optionsOf(QString const& path);
  static void clear();
  /// What files are called in a list of them: their names, with the folder where two have the same.
  [[nodiscard]] static QStringList namesOf(QStringList const& files);
  /// Where a file is, and how it will be read if not as usual.
  [[nodiscard]] static QString tipOf(QString const& path);
};

} // namespace runsieve::app
