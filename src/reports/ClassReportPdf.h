// The class report as a PDF file, drawn page by page as it is written, so that
// even a report of thousands of pages needs little memory.
#pragma once

#include <QIODevice>

#include <filesystem>
#include <optional>
#include <string>

struct ClassReport;

// Landscape pages in the paper size of the locale.
bool writeClassReportPdf(QIODevice &device, const ClassReport &report);

// Written beside path and renamed over it once complete, so that a failure never
// leaves half a file; on failure, a message naming the file.
std::optional<std::string> saveClassReportPdf(const std::filesystem::path &path,
                                              const ClassReport &report);

// The number of pages the report takes on that paper.
int classReportPageCount(const ClassReport &report);
