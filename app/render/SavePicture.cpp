#include "app/render/SavePicture.h"

#include <vtkGL2PSExporter.h>
#include <vtkNew.h>
#include <vtkPNGWriter.h>
#include <vtkRenderWindow.h>
#include <vtkUnsignedCharArray.h>
#include <vtkWindowToImageFilter.h>

#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace runsieve::app {

namespace {

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
  return QByteArray(reinterpret_cast<const char*>(bytes->GetPointer(0)), static_cast<int>(bytes->GetNumberOfValues()));
}

QByteArray pdfOf(vtkRenderWindow* window)
{
  // The exporter writes files only, and appends the extension.
  QTemporaryDir folder;
  vtkNew<vtkGL2PSExporter> exporter;
  exporter->SetRenderWindow(window);
  exporter->SetFileFormat(vtkGL2PSExporter::PDF_FILE);
  exporter->SetSort(vtkGL2PSExporter::NO_SORT);
  exporter->SetSimpleLineOffset(0);
  exporter->SetCompress(1);
  exporter->SetTextAsPath(1);
  exporter->SetFilePrefix(QFile::encodeName(folder.filePath("picture")).constData());
  exporter->Write();
  QFile file(folder.filePath("picture.pdf"));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void savePicture(vtkRenderWindow* window, std::string const& path)
{
  const QString name = QFile::decodeName(path.c_str());
  const QString extension = QFileInfo(name).suffix().toLower();
  if (extension != "png" && extension != "pdf")
    throw std::runtime_error(path + ": a picture is saved as .png or .pdf");
  const QByteArray bytes = extension == "png" ? pngOf(window) : pdfOf(window);
  QSaveFile file(name);
  if (bytes.isEmpty()) throw std::runtime_error(path + ": the picture could not be made");
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    throw std::runtime_error(path + ": " + file.errorString().toStdString());
}

} // namespace runsieve::app
