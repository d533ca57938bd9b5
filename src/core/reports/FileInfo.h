#pragma once
// What the File Information window shows, without the window: the label texts
// from the statistics, the rows of its two lists, and the notes, which are the
// file's comment.
#include "core/model/Session.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace gelvane {

// The text of a value that the file doesn't have.
inline constexpr const char *kNotAvailable = "N/A";

// The labels of the General tab and the lists of the second tab, as the window
// opens. Every count label holds its number or "N/A".
struct FileInfoTexts {
    std::string lblFileName, lblFileType, lblSize;
    std::string lblFigures, lblActors, lblMaterials, lblSdMats;
    std::string lblChannels, lblPose, lblMorph, lblNull;
    std::string lblTexture, lblBump, lblReflection, lblTransparency;
    std::vector<std::string> cmbFigures; // one row for each object (one empty row for none)
    std::vector<std::string> cmbActors;  // empty when the file has no actors
    bool cmbActorsEnabled = false;
};

// The labels of the actor frame for one row of cmbActors.
struct ActorRowTexts {
    std::string lblMaterialsA, lblChannelsA, lblPoseA, lblMorphA, lblNullA;
};

// The texts of the window for the statistics of the open file. The size comes
// from the file on disk: a file that is gone is the failure "File not found" (53).
FileInfoTexts FileInfoOf(const Session &session);
// The materials of the object in row `row` of cmbFigures ("0" for a row without one).
std::string FigureRowText(const FileStatisticsRecord &stats, int row);
// The actor frame for row `row` of cmbActors; all "N/A" when the file has no actors.
ActorRowTexts ActorRowOf(const FileStatisticsRecord &stats, int row);

// "Character (CR2)" and the seven other kinds by the path's extension, in any
// case; "N/A" for any other.
std::string FileTypeText(std::string_view path);
// Decimal units: below 1,000,000 bytes kilobytes to one place ("1.2 KB"),
// otherwise megabytes to two ("1.25 MB"); ties round to even.
std::string SizeText(uint64_t bytes);
// A point in time (seconds since 1970) in local time, "2024-03-14 10:22:05".
std::string DateText(int64_t seconds);
// DateText of the file's creation: "File not found" (53) when it is gone.
std::string CreationDateText(const std::string &path);

// The file's comment as the notes box shows it: one line a line.
std::string NotesOfComment(std::string_view comment);
// cmdOK: the notes become the file's comment, trimmed, their lines joined with
// "\r\n" so that a saved pose writes each as a comment line of its own. A change
// of the notes alone doesn't mark the file as modified.
void StoreNotes(Session &session, std::string_view notes);

} // namespace gelvane
