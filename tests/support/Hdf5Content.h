#pragma once

#include <hdf5.h>

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace runsieve::test {

/// A new HDF5 file to be filled. Paths may have groups, which are made.
class Hdf5Content
{
public:
  using Shape = std::vector<std::size_t>;

  /// \param compact in the newest and shortest form
  explicit Hdf5Content(std::string const& path, std::size_t bytesBefore = 0, bool compact = false)
  {
    const hid_t access = H5Pcreate(H5P_FILE_ACCESS);
    if (compact) {
      H5Pset_libver_bounds(access, H5F_LIBVER_LATEST, H5F_LIBVER_LATEST);
      H5Pset_meta_block_size(access, 1);
      H5Pset_small_data_block_size(access, 1);
    }
    const hid_t creation = H5Pcreate(H5P_FILE_CREATE);
    H5Pset_userblock(creation, bytesBefore);
    file = valid(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, creation, access));
    H5Pclose(creation);
    H5Pclose(access);
    withGroups = valid(H5Pcreate(H5P_LINK_CREATE));
    H5Pset_create_intermediate_group(withGroups, 1);
  }
  Hdf5Content(Hdf5Content const&) = delete;
  Hdf5Content& operator=(Hdf5Content const&) = delete;
  ~Hdf5Content()
  {
    H5Pclose(withGroups);
    H5Fclose(file);
  }

  [[nodiscard]] hid_t id() const { return file; }

  void numbers(std::string const& path, Shape const& shape, std::vector<double> const& values,
               hid_t type = H5T_NATIVE_DOUBLE, hid_t creation = H5P_DEFAULT)
  {
    const hid_t set = create(path, type, shape, creation);
    if (!values.empty())
      valid(H5Dwrite(set, H5T_NATIVE_DOUBLE, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data()));
    H5Dclose(set);
  }

  /// Stored in pieces, deflated.
  void compressed(std::string const& path, Shape const& shape, Shape const& piece,
                  std::vector<double> const& values)
  {
    const hid_t creation = H5Pcreate(H5P_DATASET_CREATE);
    const std::vector<hsize_t> lengths(piece.begin(), piece.end());
    H5Pset_chunk(creation, static_cast<int>(lengths.size()), lengths.data());
    H5Pset_deflate(creation, 6);
    numbers(path, shape, values, H5T_NATIVE_DOUBLE, creation);
    H5Pclose(creation);
  }

  void texts(std::string const& path, std::vector<std::string> const& values, bool variable = true)
  {
    const Texts texts(values, variable);
    const hid_t set = create(path, texts.type, {values.size()}, H5P_DEFAULT);
    valid(H5Dwrite(set, texts.type, H5S_ALL, H5S_ALL, H5P_DEFAULT, texts.data()));
    H5Dclose(set);
  }

  void attribute(std::string const& path, std::string const& name, std::vector<std::string> const& values,
                 bool variable = true)
  {
    const hsize_t number = values.size();
    writeAttribute(path, name, values, variable, H5Screate_simple(1, &number, nullptr));
  }

  void textAttribute(std::string const& path, std::string const& name, std::string const& value,
                     bool variable = true)
  {
    writeAttribute(path, name, {value}, variable, H5Screate(H5S_SCALAR));
  }

  void numberAttribute(std::string const& path, std::string const& name, double value)
  {
    const hid_t space = H5Screate(H5S_SCALAR);
    const hid_t attribute = valid(H5Acreate_by_name(file, path.c_str(), name.c_str(), H5T_NATIVE_DOUBLE,
                                                    space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    valid(H5Awrite(attribute, H5T_NATIVE_DOUBLE, &value));
    H5Aclose(attribute);
    H5Sclose(space);
  }

  /// Makes other data sets the scales of the axes of one.
  void scales(std::string const& path, std::vector<std::string> const& scalePaths)
  {
    std::vector<hobj_ref_t> references(scalePaths.size());
    std::vector<hvl_t> lists;
    for (std::size_t axis = 0; axis < scalePaths.size(); ++axis) {
      valid(H5Rcreate(&references[axis], file, scalePaths[axis].c_str(), H5R_OBJECT, -1));
      lists.push_back({1, &references[axis]});
    }
    const hsize_t axes = lists.size();
    const hid_t space = H5Screate_simple(1, &axes, nullptr);
    const hid_t type = H5Tvlen_create(H5T_STD_REF_OBJ);
    const hid_t attribute = valid(H5Acreate_by_name(file, path.c_str(), "DIMENSION_LIST", type, space,
                                                    H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    valid(H5Awrite(attribute, type, lists.data()));
    H5Aclose(attribute);
    H5Tclose(type);
    H5Sclose(space);
  }

private:
  static hid_t valid(hid_t result)
  {
    if (result < 0) throw std::runtime_error("HDF5 failed");
    return result;
  }

  /// Texts of fixed or variable length as the library takes them.
  struct Texts
  {
    Texts(std::vector<std::string> const& values, bool variable)
        : isVariable(variable), type(H5Tcopy(H5T_C_S1))
    {
      std::size_t longest = 1;
      for (std::string const& value : values) longest = std::max(longest, value.size());
      H5Tset_size(type, variable ? H5T_VARIABLE : longest);
      H5Tset_cset(type, H5T_CSET_UTF8);
      if (!variable) H5Tset_strpad(type, H5T_STR_NULLPAD);
      for (std::string const& value : values) {
        rows.push_back(value.c_str());
        bytes += value + std::string(longest - value.size(), '\0');
      }
    }
    Texts(Texts const&) = delete;
    Texts& operator=(Texts const&) = delete;
    ~Texts() { H5Tclose(type); }

    [[nodiscard]] void const* data() const
    {
      return isVariable ? static_cast<void const*>(rows.data()) : bytes.data();
    }

    bool isVariable;
    hid_t type;
    std::vector<char const*> rows;
    std::string bytes;
  };

  hid_t create(std::string const& path, hid_t type, Shape const& shape, hid_t creation)
  {
    const std::vector<hsize_t> lengths(shape.begin(), shape.end());
    const hid_t space = valid(H5Screate_simple(static_cast<int>(lengths.size()), lengths.data(), nullptr));
    const hid_t set = valid(H5Dcreate2(file, path.c_str(), type, space, withGroups, creation, H5P_DEFAULT));
    H5Sclose(space);
    return set;
  }

  void writeAttribute(std::string const& path, std::string const& name,
                      std::vector<std::string> const& values, bool variable, hid_t space)
  {
    const Texts texts(values, variable);
    const hid_t attribute = valid(H5Acreate_by_name(file, path.c_str(), name.c_str(), texts.type, space,
                                                    H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    valid(H5Awrite(attribute, texts.type, texts.data()));
    H5Aclose(attribute);
    H5Sclose(space);
  }

  hid_t file;
  hid_t withGroups;
};

} // namespace runsieve::test
