#include "app/render/SavePicture.h"

#include "app/render/PdfFile.h"

#include <runsieve/core/files/SafeFile.h>
#include <runsieve/items/ExportedImages.h>

#include <vtkGL2PSExporter.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkRenderWindow.h>
#include <vtkUnsignedCharArray.h>
#include <vtkWindowToImageFilter.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include <stdexcept>

namespace runsieve::app {

namespace {

/// More runs would take a PDF of megabytes, and readers seconds to show it.
constexpr std::size_t mostShapes = 2000;

constexpr double pixelsPerPoint = 2.0;
constexpr int pixelsPerInch = 144;

QByteArray pngOf(vtkRenderWindow* window)
{
  vtkNew<vtkWindowToImageFilter> image;
  image->SetInput(window);
  image->ReadFrontBufferOff();
  image->SetInputBufferTypeToRGB();
  vtkNew<vtkPNGWriter> writer;
  writer->SetInputConnection(image->GetOutputPort());
  writer->WriteToMemoryOn();
  writer->Write();
  vtkUnsignedCharArray* bytes = writer->GetResult();
  return QByteArray(reinterpret_cast<const char*>(bytes->GetPointer(0)),
                    static_cast<int>(bytes->GetNumberOfValues()));
}

/// Blanks out operators that readers reject. The exporter writes the opacity of translucent things as
/// graphics states that the page's resources do not define, and as an operator that does not exist; without
/// them they print opaque, as they do anyway, and the length of the page stays what its header says.
QByteArray withoutUndefinedStates(QByteArray pdf)
{
  for (int begin = 0, end = 0; begin < pdf.size(); begin = end + 1) {
    end = pdf.indexOf('\n', begin);
    if (end < 0) end = pdf.size();
    const QByteArray line = QByteArray::fromRawData(pdf.constData() + begin, end - begin);
    const bool undefinedState = line.startsWith("/GS") && line.endsWith(" gs") && line != "/GSa gs";
    const bool unknownOperator = line.endsWith(" ca") && line.size() < 12;
    if (undefinedState || unknownOperator) pdf.replace(begin, end - begin, QByteArray(end - begin, ' '));
  }
  return pdf;
}

QByteArray pdfOf(vtkRenderWindow* window, std::string& note)
{
  ExportedImages images(pixelsPerPoint, mostShapes);
  // The exporter writes files only, and appends the extension.
  QTemporaryDir folder;
  vtkNew<vtkGL2PSExporter> exporter;
  exporter->SetRenderWindow(window);
  exporter->SetFileFormat(vtkGL2PSExporter::PDF_FILE);
  exporter->SetSort(vtkGL2PSExporter::NO_SORT);
  exporter->SetSimpleLineOffset(0);
  exporter->SetCompress(0);
  exporter->SetTextAsPath(1);
  exporter->SetFilePrefix(QFile::encodeName(folder.filePath("picture")).constData());
  exporter->Write();
  QFile file(folder.filePath("picture.pdf"));
  if (!file.open(QIODevice::ReadOnly)) return {};
  if (!images.images().empty())
    note = "the lines of runs are an image of " + std::to_string(pixelsPerInch) +
           " pixels per inch in the PDF, the rest are shapes (plain lines of up to " +
           std::to_string(mostShapes) + " runs stay lines)";
  return finishedPdf(withoutUndefinedStates(file.readAll()), images.images());
}

} // namespace

std::string savePicture(vtkRenderWindow* window, std::string const& path)
{
  const QString name = QFile::decodeName(path.c_str());
  const QString extension = QFileInfo(name).suffix().toLower();
  if (extension != "png" && extension != "pdf")
    throw std::runtime_error(path + ": a picture is saved as .png or .pdf");
  std::string note;
  const QByteArray bytes = extension == "png" ? pngOf(window) : pdfOf(window, note);
  if (bytes.isEmpty()) throw std::runtime_error(path + ": the picture could not be made");
  SafeFile file(path);
  file.write({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  file.commit();
  return note;
}

} // namespace runsieve::app
