#pragma once

#include <runsieve/core/read/NamedArray.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace runsieve {

class Hdf5Handle;

/// An HDF5 file that is read. While one lives, the HDF5 library does not print its own messages in this
/// thread.
///
/// The library may be built without locks: only one thread of the process may use this at a time.
class Hdf5File
{
public:
  /// \param bytes its size, by which the claims of its content are judged
  /// \throw ScanError if it cannot be opened
  Hdf5File(std::string const& file, std::size_t bytes);
  Hdf5File(Hdf5File const&) = delete;
  Hdf5File& operator=(Hdf5File const&) = delete;
  ~Hdf5File();

  /// All data sets of the file itself, in the order of their paths, which begin without a '/'. They must not
  /// be used longer than this.
  [[nodiscard]] std::vector<NamedArray> dataSets() const;

  /// The attributes of a data set that are rows of texts, each with the path of the data set before its name.
  [[nodiscard]] std::vector<NamedArray> textAttributes(std::string const& dataSet) const;

  /// The texts of an attribute; one if it is a single text. Nothing if there is no such attribute.
  [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string const& dataSet,
                                                              std::string const& attribute) const;

  /// The attributes of a data set that are single numbers, by their names.
  [[nodiscard]] std::vector<std::pair<std::string, double>>
  numberAttributes(std::string const& dataSet) const;

private:
  /// Keeps the library quiet.
  class Quiet;

  [[nodiscard]] NamedArray describe(std::string path, Hdf5Handle dataSet) const;

  std::string fileName;
  std::size_t fileBytes;
  std::unique_ptr<Quiet> quiet; ///< before the handle, so that closing is quiet too
  std::shared_ptr<Hdf5Handle> handle;
};

} // namespace runsieve
