#pragma once
// Loading and saving the settings record as Settings.ini in the state folder.
#include "core/app/PoserSearch.h"
#include "core/model/Settings.h"

#include <string>
#include <string_view>

namespace gelvane {

class Interaction;

// The default of a folder entry ("CR2" ... "Save", "Map") under Poser's folder,
// "\Runtime\..." form; empty for other keys.
const char *DerivedFolder(std::string_view key);

// A folder setting that names an existing folder: a stored "none" never does, whatever
// the current directory holds.
bool IsExistingFolder(const std::string &value);

// The state folder's Settings.ini path.
std::string SettingsFilePath();

// The profile-string calls on a settings file. Every caller passes an empty default,
// so a missing key and an empty value read alike; values are cut at 259 characters.
std::string ReadIni(const std::string &section, const std::string &key, const std::string &fileName,
                    const std::string &defaultValue);
// True when written. With `allowNull` an empty key removes the section and an
// empty value removes the entry; without it the texts are written as they are.
bool WriteIni(const std::string &section, const std::string &key, const std::string &value, const std::string &fileName,
              bool allowNull);

// Normalises Settings.ini (creating it when missing) and returns the settings. Poser's
// folder may be written with "~" or a separator at its end; one that doesn't exist is
// reported and left in the file as written. Failures of single steps are ignored: that
// setting keeps its fallback. This form never asks anything (the command line's).
Settings LoadSettings(Interaction &ui);
// The window's form: when the file names no Poser folder (a first start, or "none"), the
// folders that `findPoser` gives are offered through `ui`; on a first start where none is
// found, the folder chooser asks.
Settings LoadSettings(Interaction &ui, const PoserFinder &findPoser);

// Writes every setting back, in the fixed order of the file; a SaveFailure leaves
// the file as it was.
void SaveSettings(const Settings &settings);

} // namespace gelvane
