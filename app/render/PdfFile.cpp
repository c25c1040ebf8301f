#include "app/render/PdfFile.h"

#include "app/render/ImagePalette.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace runsieve::app {

namespace {

/// An object without its number.
struct PdfObject
{
  QByteArray head;   ///< up to its stream
  QByteArray stream; ///< of objects that have one
  bool hasStream = false;
};

[[noreturn]] void refuse(char const* why)
{
  throw std::runtime_error(std::string("the PDF that was exported is not as expected: ") + why);
}

/// Everything from here to the end of the line.
QByteArray lineAt(QByteArray const& text, int begin)
{
  const int end = text.indexOf('\n', begin);
  return text.mid(begin, end < 0 ? -1 : end - begin);
}

/// Where the objects 1, 2, ... stand in the file.
std::vector<int> placesOfObjects(QByteArray const& pdf)
{
  const int last = pdf.lastIndexOf("startxref\n");
  if (last < 0) refuse("no cross references");
  int at = lineAt(pdf, last + 10).toInt();
  if (!pdf.mid(at, 5).startsWith("xref\n")) refuse("no cross references");
  at += 5;
  const int count = lineAt(pdf, at).split(' ').value(1).toInt();
  at = pdf.indexOf('\n', at) + 1;
  constexpr int entry = 20; // bytes
  std::vector<int> places;
  for (int i = 1; i < count; ++i) places.push_back(pdf.mid(at + i * entry, 10).toInt());
  return places;
}

/// What stands behind a name: a number, or a reference to an object that is one.
int numberBehind(QByteArray const& head, QByteArray const& name, QByteArray const& pdf,
                 std::vector<int> const& places)
{
  const int at = head.indexOf(name);
  if (at < 0) refuse("a stream without a length");
  const QList<QByteArray> words = lineAt(head, at + name.size()).simplified().split(' ');
  const int value = words.value(0).toInt();
  if (words.value(2) != "R") return value;
  if (value < 1 || value > static_cast<int>(places.size())) refuse("an unknown object");
  const int object = places[static_cast<std::size_t>(value) - 1];
  return lineAt(pdf, pdf.indexOf('\n', object) + 1).toInt();
}

PdfObject objectAt(QByteArray const& pdf, int place, std::vector<int> const& places)
{
  const int begin = pdf.indexOf('\n', place) + 1; // behind "4 0 obj"
  const int end = pdf.indexOf("endobj", begin);
  const int stream = pdf.indexOf("stream\n", begin);
  if (place < 1 || begin < 1 || end < 0) refuse("an object is cut off");
  if (stream < 0 || stream > end) return {pdf.mid(begin, end - begin), {}, false};
  PdfObject object{pdf.mid(begin, stream - begin), {}, true};
  object.stream = pdf.mid(stream + 7, numberBehind(object.head, "/Length ", pdf, places));
  return object;
}

/// Adds an entry at the end of a dictionary.
void addEntry(QByteArray& head, QByteArray const& entry)
{
  const int end = head.lastIndexOf(">>");
  if (end < 0) refuse("an object that is no dictionary");
  head.insert(end, '\n' + entry + '\n');
}

void compress(PdfObject& object)
{
  if (!object.hasStream) return;
  const int length = object.head.indexOf("/Length ");
  if (length >= 0) { // to the end of the line or of the dictionary
    const int end = std::min(object.head.indexOf('\n', length), object.head.lastIndexOf(">>"));
    object.head.remove(length, end - length);
  }
  if (!object.head.contains("/Filter")) {
    constexpr int sizeBytes = 4; // Qt puts the size in front of what zlib writes
    object.stream = qCompress(object.stream).mid(sizeBytes);
    addEntry(object.head, "/Filter /FlateDecode");
  }
  addEntry(object.head, "/Length " + QByteArray::number(object.stream.size()));
}

/// The number with two digits behind the point.
QByteArray rounded(QByteArray const& number)
{
  const int point = number.indexOf('.');
  if (point < 0 || number.size() - point <= 3) return number;
  return QByteArray::number(number.toDouble(), 'f', 2);
}

/// Which image has its mark in the colour that a line sets.
std::optional<std::size_t> markedBy(QByteArray const& line, std::size_t images)
{
  const QList<QByteArray> words = line.split(' ');
  if (words.size() != 4) return std::nullopt;
  auto const channel = [&](int i) { return std::lround(255.0 * words[i].toDouble()); };
  for (std::size_t i = 0; i < images; ++i) {
    auto const mark = ExportedImages::markOf(i);
    if (channel(0) == mark[0] && channel(1) == mark[1] && channel(2) == mark[2]) return i;
  }
  return std::nullopt;
}

QByteArray nameOf(std::size_t image)
{
  return "/Runs" + QByteArray::number(static_cast<int>(image));
}

QByteArray drawn(ExportedImages::Image const& image, std::size_t number)
{
  auto const text = [](double value) { return QByteArray::number(value, 'f', 4); };
  return "q\n" + text(image.width) + " 0 0 " + text(image.height) + ' ' + text(image.left) + ' ' +
         text(image.bottom) + " cm\n" + nameOf(number) + " Do\nQ\n";
}

/// A page with images in place of their marks, which are paths of their own, and with rounded places.
QByteArray finishedPage(QByteArray const& page, std::vector<ExportedImages::Image> const& images)
{
  QByteArray out;
  out.reserve(page.size());
  std::optional<std::size_t> marked; // whose mark has the present colour
  std::size_t found = 0;
  for (int begin = 0; begin < page.size();) {
    int end = page.indexOf('\n', begin);
    if (end < 0) end = page.size();
    const QByteArray line = QByteArray::fromRawData(page.constData() + begin, end - begin);
    begin = end + 1;
    if (line.endsWith(" RG")) marked = markedBy(line, images.size());
    const bool isPlace = line.endsWith(" m") || line.endsWith(" l");
    if (marked && isPlace) continue;
    if (marked && line == "S") {
      out += drawn(images[*marked], *marked);
      ++found;
      continue;
    }
    if (isPlace) {
      const int blank = line.indexOf(' ');
      out += rounded(line.left(blank)) + ' ' + rounded(line.mid(blank + 1, line.size() - blank - 3)) +
             line.right(2) + '\n';
    } else {
      out += line + '\n';
    }
  }
  if (found != images.size()) refuse("an image has no place");
  return out;
}

/// By how much the colour of a pixel may differ from that on the screen, of 255: less than is seen.
constexpr int mostColorError = 8;

/// Pixels of an image, or how opaque they are, as an object. \param colors the colour space, as PDF names it
PdfObject imageObject(ExportedImages::Image const& image, QByteArray const& colors, QByteArray pixels)
{
  PdfObject object;
  object.head = "<<\n/Type /XObject\n/Subtype /Image\n/Width " + QByteArray::number(image.columns) +
                "\n/Height " + QByteArray::number(image.rows) + "\n/ColorSpace " + colors +
                "\n/BitsPerComponent 8\n>>\n";
  object.stream = std::move(pixels);
  object.hasStream = true;
  return object;
}

/// Rows from the top. Pixels where nothing is have the colour beside them: readers mix colours between
/// pixels.
std::vector<std::uint8_t> colorsOf(ExportedImages::Image const& image)
{
  std::vector<std::uint8_t> colors;
  colors.reserve(3 * static_cast<std::size_t>(image.columns) * static_cast<std::size_t>(image.rows));
  std::array<std::uint8_t, 3> last = {};
  for (int row = image.rows - 1; row >= 0; --row)
    for (int column = 0; column < image.columns; ++column) {
      auto const* pixel =
          image.pixels.data() + 4 * (static_cast<std::size_t>(row) * static_cast<std::size_t>(image.columns) +
                                     static_cast<std::size_t>(column));
      if (pixel[3] > 0) std::copy_n(pixel, last.size(), last.begin());
      colors.insert(colors.end(), last.begin(), last.end());
    }
  return colors;
}

QByteArray bytesOf(std::vector<std::uint8_t> const& values)
{
  return {reinterpret_cast<char const*>(values.data()), static_cast<int>(values.size())};
}

/// Pixels are numbers of at most 256 colours: a third of the bytes, and far less where two sets of shades
/// mix.
PdfObject colorObject(ExportedImages::Image const& image)
{
  const std::vector<std::uint8_t> colors = colorsOf(image);
  const std::optional<ImagePalette> palette = paletteOf(colors, mostColorError);
  if (!palette) return imageObject(image, "/DeviceRGB", bytesOf(colors));
  QByteArray list;
  for (auto const& color : palette->colors) list.append(reinterpret_cast<char const*>(color.data()), 3);
  const QByteArray last = QByteArray::number(static_cast<int>(palette->colors.size()) - 1);
  return imageObject(image, "[/Indexed /DeviceRGB " + last + " <" + list.toHex() + ">]",
                     bytesOf(palette->pixels));
}

/// One of 64 steps: they are not seen at the edges of lines, the only places that are neither clear nor
/// opaque.
std::uint8_t roundedOpacity(std::uint8_t opacity)
{
  constexpr int last = 63;
  const int step = (opacity * last + 127) / 255;
  return static_cast<std::uint8_t>((step * 255 + last / 2) / last);
}

/// Rows from the top.
QByteArray opacitiesOf(ExportedImages::Image const& image)
{
  QByteArray opacities;
  opacities.reserve(image.columns * image.rows);
  for (int row = image.rows - 1; row >= 0; --row)
    for (int column = 0; column < image.columns; ++column)
      opacities += static_cast<char>(roundedOpacity(
          image.pixels[4 * (static_cast<std::size_t>(row) * static_cast<std::size_t>(image.columns) +
                            static_cast<std::size_t>(column)) +
                       3]));
  return opacities;
}

void addImages(std::vector<PdfObject>& objects, std::vector<ExportedImages::Image> const& images)
{
  auto const isPage = [](PdfObject const& o) { return o.head.contains("/Type /Page\n"); };
  auto const page = std::find_if(objects.begin(), objects.end(), isPage);
  if (page == objects.end()) refuse("no page");
  const auto pageNumber = page - objects.begin();
  const int contents = page->head.indexOf("/Contents ");
  const int content = contents < 0 ? 0 : lineAt(page->head, contents + 10).split(' ').value(0).toInt();
  if (content < 1 || content > static_cast<int>(objects.size())) refuse("a page without contents");
  PdfObject& text = objects[static_cast<std::size_t>(content) - 1];
  text.stream = finishedPage(text.stream, images);
  QByteArray names;
  for (std::size_t i = 0; i < images.size(); ++i) {
    objects.push_back(imageObject(images[i], "/DeviceGray", opacitiesOf(images[i])));
    const QByteArray mask = QByteArray::number(static_cast<int>(objects.size()));
    objects.push_back(colorObject(images[i]));
    addEntry(objects.back().head, "/SMask " + mask + " 0 R");
    names += nameOf(i) + ' ' + QByteArray::number(static_cast<int>(objects.size())) + " 0 R\n";
  }
  QByteArray& head = objects[static_cast<std::size_t>(pageNumber)].head;
  const int list = head.indexOf("/XObject\n<<\n");
  if (list < 0 && !images.empty()) refuse("a page without images");
  if (list >= 0) head.insert(list + 12, names);
}

QByteArray written(std::vector<PdfObject> const& objects, QByteArray const& trailer)
{
  QByteArray pdf = "%PDF-1.4\n";
  QByteArray references;
  for (std::size_t i = 0; i < objects.size(); ++i) {
    references += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
    pdf += QByteArray::number(static_cast<int>(i) + 1) + " 0 obj\n" + objects[i].head;
    if (objects[i].hasStream) pdf += "stream\n" + objects[i].stream + "\nendstream\n";
    pdf += "endobj\n";
  }
  const QByteArray size = QByteArray::number(static_cast<int>(objects.size()) + 1);
  const QByteArray begin = QByteArray::number(pdf.size());
  return pdf + "xref\n0 " + size + "\n0000000000 65535 f \n" + references + "trailer\n<<\n/Size " + size +
         '\n' + trailer + "startxref\n" + begin + "\n%%EOF\n";
}

} // namespace

QByteArray finishedPdf(QByteArray const& exported, std::vector<ExportedImages::Image> const& images)
{
  const std::vector<int> places = placesOfObjects(exported);
  std::vector<PdfObject> objects;
  for (const int place : places) objects.push_back(objectAt(exported, place, places));
  addImages(objects, images);
  for (PdfObject& object : objects) compress(object);
  const int size = exported.lastIndexOf("/Size ");
  const int end = exported.lastIndexOf("startxref");
  if (size < 0 || end < size) refuse("no trailer");
  const int rest = exported.indexOf('\n', size) + 1;
  return written(objects, exported.mid(rest, end - rest));
}

} // namespace runsieve::app
