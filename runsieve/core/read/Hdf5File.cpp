#include <runsieve/core/read/Hdf5File.h>

#include <runsieve/core/scan/ScanError.h>
#include <runsieve/core/text/FieldText.h>
#include <runsieve/core/text/Utf8.h>

#include <hdf5.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <new>
#include <string_view>
#include <utility>

namespace runsieve {

/// An object of the library, closed when this goes.
class Hdf5Handle
{
public:
  using Close = herr_t (*)(hid_t);

  Hdf5Handle(hid_t id, Close close) : id(id), close(close) {}
  Hdf5Handle(Hdf5Handle&& other) noexcept : id(std::exchange(other.id, -1)), close(other.close) {}
  Hdf5Handle& operator=(Hdf5Handle&&) = delete;
  Hdf5Handle(Hdf5Handle const&) = delete;
  Hdf5Handle& operator=(Hdf5Handle const&) = delete;
  ~Hdf5Handle()
  {
    if (id >= 0) close(id);
  }

  [[nodiscard]] explicit operator bool() const { return id >= 0; }
  [[nodiscard]] hid_t get() const { return id; }

private:
  hid_t id;
  Close close;
};

class Hdf5File::Quiet
{
public:
  Quiet()
  {
    ::H5Eget_auto2(H5E_DEFAULT, &print, &data);
    ::H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
  }
  Quiet(Quiet const&) = delete;
  Quiet& operator=(Quiet const&) = delete;
  ~Quiet() { ::H5Eset_auto2(H5E_DEFAULT, print, data); }

private:
  H5E_auto2_t print = nullptr;
  void* data = nullptr;
};

namespace {

constexpr std::size_t mostBytes = std::size_t(64) << 30;

/// The values of a data set may take more bytes than are stored, because they are compressed or never
/// written, but not without limit.
constexpr std::size_t mostInflation = 2048;
constexpr std::size_t freeBytes = 1 << 20;

/// Texts of any length that are read at a time: each could be as long as the file.
constexpr std::size_t textsAtOnce = 16;

/// Texts of any length lie in the file one by one, and each Latin-1 character becomes two bytes at most. In a
/// damaged file many may be said to lie in one place.
std::size_t mostTextBytes(hid_t type, std::size_t fileBytes)
{
  return ::H5Tis_variable_str(type) > 0 ? 2 * fileBytes + freeBytes : SIZE_MAX;
}

char const* const numbersAdvice = "save it as plain numbers or texts";

using Shape = std::vector<std::size_t>;

/// The lengths of a space; nothing if it holds no values.
std::optional<Shape> shapeOf(hid_t space)
{
  int const axes = ::H5Sget_simple_extent_ndims(space);
  if (axes < 0 || ::H5Sget_simple_extent_type(space) == H5S_NULL) return std::nullopt;
  std::vector<hsize_t> lengths(static_cast<std::size_t>(axes));
  if (axes > 0 && ::H5Sget_simple_extent_dims(space, lengths.data(), nullptr) < 0) return std::nullopt;
  return Shape(lengths.begin(), lengths.end());
}

/// a times b, or more than any limit.
std::size_t limitedProduct(std::size_t a, std::size_t b)
{
  return b != 0 && a > SIZE_MAX / b ? SIZE_MAX : a * b;
}

std::size_t product(Shape const& shape)
{
  std::size_t items = 1;
  for (std::size_t const length : shape) items = limitedProduct(items, length);
  return items;
}

/// A text that lies in a fixed room, without what fills the room.
std::string fixedText(std::string_view room, H5T_str_t padding)
{
  if (padding == H5T_STR_SPACEPAD) return asUtf8(room.substr(0, room.find_last_not_of(' ') + 1));
  return asUtf8(room.substr(0, room.find('\0')));
}

/// Reads texts by a function that takes the type in memory and where they belong.
/// \return whether they could be read
bool readTexts(hid_t type, std::size_t number, std::function<herr_t(hid_t, void*)> const& read,
               std::vector<std::string>& texts)
{
  if (number == 0) return true;
  if (::H5Tis_variable_str(type) <= 0) {
    std::size_t const room = ::H5Tget_size(type);
    std::string bytes(limitedProduct(number, room), '\0');
    if (read(type, bytes.data()) < 0) return false;
    for (std::size_t i = 0; i < number; ++i)
      texts.push_back(fixedText(std::string_view(bytes).substr(i * room, room), ::H5Tget_strpad(type)));
    return true;
  }
  Hdf5Handle const memory(::H5Tcopy(H5T_C_S1), ::H5Tclose);
  hsize_t const count = number;
  Hdf5Handle const space(::H5Screate_simple(1, &count, nullptr), ::H5Sclose);
  if (!memory || !space || ::H5Tset_size(memory.get(), H5T_VARIABLE) < 0 ||
      ::H5Tset_cset(memory.get(), ::H5Tget_cset(type)) < 0)
    return false;
  std::vector<char*> rows(number, nullptr);
  struct Reclaim
  {
    hid_t type;
    hid_t space;
    void* rows;
    ~Reclaim() { ::H5Dvlen_reclaim(type, space, H5P_DEFAULT, rows); }
  } const reclaim = {memory.get(), space.get(), rows.data()};
  if (read(memory.get(), rows.data()) < 0) return false;
  for (char const* row : rows) texts.push_back(row != nullptr ? asUtf8(row) : std::string());
  return true;
}

/// `count` places of the first axis of a data set.
bool readSlices(hid_t dataSet, Shape const& shape, std::size_t first, std::size_t count, hid_t type, void* to)
{
  std::vector<hsize_t> start(shape.size(), 0);
  std::vector<hsize_t> lengths(shape.begin(), shape.end());
  start.front() = first;
  lengths.front() = count;
  hsize_t items = 1;
  for (hsize_t const length : lengths) items *= length;
  if (items == 0) return true;
  Hdf5Handle const from(::H5Dget_space(dataSet), ::H5Sclose);
  Hdf5Handle const memory(::H5Screate_simple(1, &items, nullptr), ::H5Sclose);
  return from && memory &&
         ::H5Sselect_hyperslab(from.get(), H5S_SELECT_SET, start.data(), nullptr, lengths.data(), nullptr) >=
             0 &&
         ::H5Dread(dataSet, type, memory.get(), from.get(), H5P_DEFAULT, to) >= 0;
}

/// What is against reading a data set that is stored so; empty if nothing is. Sets the grain.
std::string storageFault(hid_t dataSet, std::size_t valueBytes, std::size_t items, std::size_t fileBytes,
                         NamedArray& array)
{
  Hdf5Handle const list(::H5Dget_create_plist(dataSet), ::H5Pclose);
  if (!list) return "it is damaged";
  if (::H5Pget_external_count(list.get()) != 0)
    return "its values lie in other files; copy all into one, for example with h5repack";
  H5D_layout_t const layout = ::H5Pget_layout(list.get());
  if (layout == H5D_VIRTUAL) return "it is put together from other data sets; copy it into one";
  std::size_t const stored =
      std::min<std::size_t>(static_cast<std::size_t>(::H5Dget_storage_size(dataSet)), fileBytes);
  std::size_t const most = limitedProduct(stored, mostInflation);
  std::size_t const bytes = limitedProduct(items, std::max(valueBytes, sizeof(double)));
  if (bytes > mostBytes) return "it holds more than 64 GiB; save it in parts";
  if (bytes > freeBytes && bytes - freeBytes > most)
    return "it claims " + std::to_string(items) + " values, of which hardly any are stored";
  if (layout != H5D_CHUNKED) return "";

  std::vector<hsize_t> chunk(array.shape.size(), 1);
  if (::H5Pget_chunk(list.get(), static_cast<int>(chunk.size()), chunk.data()) < 0) return "it is damaged";
  std::size_t const chunkBytes = limitedProduct(product(Shape(chunk.begin(), chunk.end())), valueBytes);
  if (chunkBytes > freeBytes && chunkBytes - freeBytes > most)
    return "it is stored in pieces that are larger than what is stored";
  if (!chunk.empty()) array.grain = static_cast<std::size_t>(std::max<hsize_t>(chunk.front(), 1));
  for (int i = 0; i < ::H5Pget_nfilters(list.get()); ++i) {
    unsigned flags = 0;
    unsigned config = 0;
    std::size_t values = 0;
    H5Z_filter_t const filter =
        ::H5Pget_filter2(list.get(), static_cast<unsigned>(i), &flags, &values, nullptr, 0, nullptr, &config);
    if (filter < 0) return "it is damaged";
    if (::H5Zfilter_avail(filter) <= 0)
      return "it is compressed by a filter that is not installed (number " + std::to_string(filter) +
             "); save it with gzip compression";
  }
  return "";
}

/// What a data type is; its values in words if they are unreadable.
NamedArray::Kind kindOf(hid_t type, std::string& why)
{
  switch (::H5Tget_class(type)) {
  case H5T_INTEGER:
  case H5T_FLOAT:
  case H5T_ENUM: // as which Python saves truth values
    return NamedArray::Kind::Numbers;
  case H5T_STRING:
    return NamedArray::Kind::Texts;
  case H5T_COMPOUND:
    why = std::string("it holds records of several fields; ") + numbersAdvice;
    break;
  default:
    why = std::string("it holds neither numbers nor texts; ") + numbersAdvice;
  }
  return NamedArray::Kind::Unreadable;
}

/// Collects the paths of what the file itself holds: links into other files are not followed.
herr_t collectPath(hid_t, char const* name, H5L_info_t const* info, void* paths)
{
  if (info->type != H5L_TYPE_HARD) return 0;
  try {
    static_cast<std::vector<std::string>*>(paths)->push_back(name);
    return 0;
  } catch (std::bad_alloc const&) {
    return -1;
  }
}

herr_t collectName(hid_t, char const* name, H5A_info_t const*, void* names)
{
  try {
    static_cast<std::vector<std::string>*>(names)->push_back(name);
    return 0;
  } catch (std::bad_alloc const&) {
    return -1;
  }
}

Hdf5Handle openForReading(std::string const& file)
{
  Hdf5Handle const access(::H5Pcreate(H5P_FILE_ACCESS), ::H5Pclose);
#if H5_VERSION_GE(1, 10, 7)
  // Reading needs no lock, which some file systems refuse.
  ::H5Pset_file_locking(access.get(), false, true);
#endif
  return {::H5Fopen(file.c_str(), H5F_ACC_RDONLY, access.get()), ::H5Fclose};
}

/// The bare names of the data sets that are the scales of the axes of another, as netCDF and xarray write
/// them; none if it has no scales or they cannot be read.
std::vector<std::string> axisNamesOf(hid_t dataSet, std::size_t axes)
{
  constexpr char list[] = "DIMENSION_LIST";
  if (axes == 0 || ::H5Aexists(dataSet, list) <= 0) return {};
  Hdf5Handle const attribute(::H5Aopen(dataSet, list, H5P_DEFAULT), ::H5Aclose);
  if (!attribute) return {};
  Hdf5Handle const type(::H5Aget_type(attribute.get()), ::H5Tclose);
  Hdf5Handle const space(::H5Aget_space(attribute.get()), ::H5Sclose);
  if (!type || !space || ::H5Tget_class(type.get()) != H5T_VLEN || shapeOf(space.get()) != Shape{axes})
    return {};
  Hdf5Handle const item(::H5Tget_super(type.get()), ::H5Tclose);
  if (!item || ::H5Tequal(item.get(), H5T_STD_REF_OBJ) <= 0) return {};
  std::vector<hvl_t> scales(axes, hvl_t{0, nullptr});
  if (::H5Aread(attribute.get(), type.get(), scales.data()) < 0) return {};
  std::vector<std::string> names(axes);
  for (std::size_t axis = 0; axis < axes; ++axis) {
    if (scales[axis].len == 0) continue;
    Hdf5Handle const scale(::H5Rdereference2(dataSet, H5P_DEFAULT, H5R_OBJECT, scales[axis].p), ::H5Oclose);
    constexpr std::size_t longest = 1024;
    std::string path(longest, '\0');
    if (!scale || ::H5Iget_name(scale.get(), path.data(), path.size()) <= 0) continue;
    names[axis] = bareName(path.substr(0, path.find('\0')));
  }
  ::H5Dvlen_reclaim(type.get(), space.get(), H5P_DEFAULT, scales.data());
  return names;
}

struct Attribute
{
  Hdf5Handle handle;
  Hdf5Handle type;
  std::optional<Shape> shape;
};

/// An attribute of texts; nothing if it is none, or claims more than the file can hold.
std::optional<Attribute> openTexts(hid_t object, std::string const& name, std::size_t fileBytes)
{
  Hdf5Handle handle(::H5Aopen(object, name.c_str(), H5P_DEFAULT), ::H5Aclose);
  if (!handle) return std::nullopt;
  Hdf5Handle type(::H5Aget_type(handle.get()), ::H5Tclose);
  Hdf5Handle const space(::H5Aget_space(handle.get()), ::H5Sclose);
  if (!type || !space || ::H5Tget_class(type.get()) != H5T_STRING) return std::nullopt;
  auto shape = shapeOf(space.get());
  if (!shape || limitedProduct(product(*shape), ::H5Tget_size(type.get())) > fileBytes) return std::nullopt;
  return Attribute{std::move(handle), std::move(type), std::move(shape)};
}

} // namespace

Hdf5File::Hdf5File(std::string const& file, std::size_t bytes)
    : fileName(file), fileBytes(bytes), quiet(std::make_unique<Quiet>()),
      handle(std::make_shared<Hdf5Handle>(openForReading(file)))
{
  if (!*handle) throw ScanError(file, "is no HDF5 file, or is damaged; was it copied completely?");
}

Hdf5File::~Hdf5File() = default;

std::vector<NamedArray> Hdf5File::dataSets() const
{
  std::vector<std::string> paths;
  if (::H5Lvisit(handle->get(), H5_INDEX_NAME, H5_ITER_INC, collectPath, &paths) < 0)
    throw ScanError(fileName, "the HDF5 file is damaged: its content cannot be listed");
  std::vector<NamedArray> arrays;
  for (std::string& path : paths) {
    Hdf5Handle object(::H5Oopen(handle->get(), path.c_str(), H5P_DEFAULT), ::H5Oclose);
    if (!object) throw ScanError(fileName, "the HDF5 file is damaged at " + quoted(path));
    if (::H5Iget_type(object.get()) == H5I_DATASET)
      arrays.push_back(describe(std::move(path), std::move(object)));
  }
  return arrays;
}

NamedArray Hdf5File::describe(std::string path, Hdf5Handle dataSet) const
{
  NamedArray array;
  array.name = std::move(path);
  Hdf5Handle const space(::H5Dget_space(dataSet.get()), ::H5Sclose);
  auto const type = std::make_shared<Hdf5Handle>(::H5Dget_type(dataSet.get()), ::H5Tclose);
  auto const shape = space ? shapeOf(space.get()) : std::nullopt;
  if (!*type || !shape) {
    array.why = "it is empty or damaged";
    return array;
  }
  array.shape = *shape;
  array.kind = kindOf(type->get(), array.why);
  if (array.kind == NamedArray::Kind::Unreadable) return array;
  array.why = storageFault(dataSet.get(), ::H5Tget_size(type->get()), product(*shape), fileBytes, array);
  if (!array.why.empty()) {
    array.kind = NamedArray::Kind::Unreadable;
    return array;
  }

  array.isSingle = ::H5Tget_class(type->get()) == H5T_FLOAT && ::H5Tget_size(type->get()) == sizeof(float);
  array.axisNames = axisNamesOf(dataSet.get(), shape->size());
  auto const fail = [file = fileName, name = array.name] {
    throw ScanError(file, "the values of " + quoted(name) + " cannot be read; the file is damaged");
  };
  auto const data = std::make_shared<Hdf5Handle>(std::move(dataSet));
  array.numbers = [data, shape = *shape, fail](std::size_t first, std::size_t count, double* to) {
    if (!readSlices(data->get(), shape, first, count, H5T_NATIVE_DOUBLE, to)) fail();
  };
  array.texts = [data, type, shape = *shape, fail, most = mostTextBytes(type->get(), fileBytes)] {
    std::vector<std::string> texts;
    std::size_t held = 0;
    for (std::size_t first = 0; first < shape.front(); first += textsAtOnce) {
      std::size_t const count = std::min(textsAtOnce, shape.front() - first);
      auto const read = [&](hid_t memory, void* to) {
        return readSlices(data->get(), shape, first, count, memory, to) ? 0 : -1;
      };
      if (!readTexts(type->get(), count, read, texts)) fail();
      for (std::size_t i = first; i < texts.size(); ++i) held += texts[i].size();
      if (held > most) fail();
    }
    return texts;
  };
  return array;
}

std::vector<std::pair<std::string, double>> Hdf5File::numberAttributes(std::string const& dataSet) const
{
  Hdf5Handle const object(::H5Oopen(handle->get(), dataSet.c_str(), H5P_DEFAULT), ::H5Oclose);
  std::vector<std::string> names;
  if (object) ::H5Aiterate2(object.get(), H5_INDEX_NAME, H5_ITER_INC, nullptr, collectName, &names);
  std::vector<std::pair<std::string, double>> numbers;
  for (std::string const& name : names) {
    Hdf5Handle const attribute(::H5Aopen(object.get(), name.c_str(), H5P_DEFAULT), ::H5Aclose);
    if (!attribute) continue;
    Hdf5Handle const type(::H5Aget_type(attribute.get()), ::H5Tclose);
    Hdf5Handle const space(::H5Aget_space(attribute.get()), ::H5Sclose);
    std::string why;
    auto const shape = space ? shapeOf(space.get()) : std::nullopt;
    if (!type || !shape || product(*shape) != 1 || kindOf(type.get(), why) != NamedArray::Kind::Numbers)
      continue;
    double value = 0.0;
    if (::H5Aread(attribute.get(), H5T_NATIVE_DOUBLE, &value) >= 0) numbers.emplace_back(name, value);
  }
  return numbers;
}

std::vector<NamedArray> Hdf5File::textAttributes(std::string const& dataSet) const
{
  Hdf5Handle const object(::H5Oopen(handle->get(), dataSet.c_str(), H5P_DEFAULT), ::H5Oclose);
  std::vector<std::string> names;
  if (object) ::H5Aiterate2(object.get(), H5_INDEX_NAME, H5_ITER_INC, nullptr, collectName, &names);
  std::vector<NamedArray> arrays;
  for (std::string const& name : names) {
    auto const attribute = openTexts(object.get(), name, fileBytes);
    if (!attribute || attribute->shape->size() != 1) continue;
    NamedArray array;
    array.name = dataSet + '/' + name;
    array.kind = NamedArray::Kind::Texts;
    array.shape = *attribute->shape;
    array.texts = [this, dataSet, name] { return texts(dataSet, name).value(); };
    arrays.push_back(std::move(array));
  }
  return arrays;
}

std::optional<std::vector<std::string>> Hdf5File::texts(std::string const& dataSet,
                                                        std::string const& attribute) const
{
  Hdf5Handle const object(::H5Oopen(handle->get(), dataSet.c_str(), H5P_DEFAULT), ::H5Oclose);
  if (!object || ::H5Aexists(object.get(), attribute.c_str()) <= 0) return std::nullopt;
  auto const opened = openTexts(object.get(), attribute, fileBytes);
  if (!opened) return std::nullopt;
  std::vector<std::string> texts;
  auto const read = [&](hid_t memory, void* to) { return ::H5Aread(opened->handle.get(), memory, to); };
  if (!readTexts(opened->type.get(), product(*opened->shape), read, texts))
    throw ScanError(fileName, "the attribute " + quoted(attribute) + " of " + quoted(dataSet) +
                                  " cannot be read; the file is damaged");
  return texts;
}

} // namespace runsieve
