#pragma once

#include <vtkSmartPointer.h>

#include <string>

class vtkTable;

namespace runsieve {

/// Writes a table as delimited text into a file and returns null, or without a file name returns the text,
/// which becomes the caller's (delete[]).
char* writeText(vtkTable* table, std::string const& fileName);

/// A file of delimited text with a line of names: columns of numbers become doubles, all others text. Empty
/// for a file that cannot be read and for one of more than 30,000 columns; VTK reports both.
vtkSmartPointer<vtkTable> readText(std::string const& fileName);

} // namespace runsieve
