#pragma once
// The File Information window as text for the command line: the labels with their
// captions, or the same numbers as one JSON object.
#include "core/model/Session.h"
#include "core/reports/HtmlReport.h"

#include <string>

namespace gelvane {

// Every label of the window with its caption, one a line, in the window's order: the
// General tab; then each object ("Figure information: NAME") and each actor ("Actor
// and prop information: NAME") with its numbers indented below it; then "Notes:" and
// the lines of the comment, indented. Lines end in "\n". Failures as FileInfoOf.
std::string FileInfoListing(const Session &session);

// The same as one JSON object, indented, ended by "\n": the file's path, name, kind, size
// in bytes and as the window shows it, creation date (from `dateOf`), version (null when
// the file names none), the objects and actors with their numbers, the sums (null where
// the window shows "N/A"), the four map counts each with the distinct maps of its kind as
// the report lists them, and the comment.
std::string FileInfoJson(const Session &session, const DateTextOf &dateOf);

} // namespace gelvane
