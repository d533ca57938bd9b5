#pragma once
// The web page about the open file: its thumbnail, the statistics of the File
// Information window and a table of each kind of map with small pictures. The
// pictures go to a folder beside the page, named after it ("Report_Images").
#include "core/model/Session.h"

#include <functional>
#include <string>
#include <string_view>

namespace gelvane {

class ThumbnailCache;

// The quality of the JPEG pictures of the report.
inline constexpr int kReportJpegQuality = 80;

// The date text the page gives for a file (the open file and each map file).
using DateTextOf = std::function<std::string(const std::string &path)>;

// The file name of `reportPath` up to its last "." + "_Images". A name without a
// "." is the failure "Invalid procedure call or argument" (5).
std::string ImagesFolderName(std::string_view reportPath);

// Writes the page for the open file to `reportPath`, lines ended by "\r\n", and
// its pictures (JPEG, quality 80) to the images folder beside it, which is created
// when the first picture needs it. A map's picture comes from list 0 of
// `thumbnails` and is decoded into it now when it isn't there yet. Failures pass
// to the caller as Failure; the page is then not written (an earlier page of the
// name stays as it was). Needs no window, so the command line can call it too.
void WriteHtmlReport(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath,
                     const DateTextOf &dateOf);
void WriteHtmlReport(const Session &session, ThumbnailCache &thumbnails, const std::string &reportPath);

// "Save info as HTML": asks for the page's path and writes it. A cancel ends
// quietly; any failure is reported in an exclamation box. Nothing on success.
void cmdCreateHTML_Click(const Session &session, ThumbnailCache &thumbnails);

} // namespace gelvane
