// A worksheet as a PDF file. The file holds nothing that changes from run to
// run, so the same sheet (the same seed) gives the same bytes.
#pragma once

#include <QIODevice>

#include <filesystem>
#include <optional>
#include <string>

struct Worksheet;

// On portrait pages of the locale's paper size.
bool writeWorksheetPdf(QIODevice &device, const Worksheet &sheet);

// Written beside path and renamed over it once complete, so that a failure never
// leaves half a file; on failure, a message naming the file.
std::optional<std::string> saveWorksheetPdf(const std::filesystem::path &path,
                                            const Worksheet &sheet);
