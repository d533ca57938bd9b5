#pragma once
// What the fuzz targets share: an interaction that answers every question with its
// default and says nothing, a private state folder, and settings under which an open
// reads everything and touches nothing outside that folder.
#include "core/model/Settings.h"
#include "core/platform/Interaction.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace gelvane::fuzz {

class QuietInteraction : public Interaction {
public:
    MsgResult MessageBox(const std::string &text, const std::string &, MsgIcon, MsgButtons buttons) override {
        LastMessage = text;
        return buttons == MsgButtons::OK || buttons == MsgButtons::OKCancel ? MsgResult::OK : MsgResult::Yes;
    }
    std::optional<std::string> InputBox(const std::string &, const std::string &, const std::string &) override {
        return std::nullopt;
    }
    std::optional<std::string> ChooseFile(const FileDialogRequest &) override { return std::nullopt; }
    std::optional<std::string> ChooseFolder(const std::string &, const std::string &) override { return std::nullopt; }
    std::optional<RgbColor> ChooseColor(const RgbColor &) override { return std::nullopt; }
    int ChooseMap(const std::string &, const std::vector<MapCandidate> &) override { return 0; }
    void ProgressShow(const std::string &, const std::string &, int) override {}
    void ProgressStatus(const std::string &) override {}
    void ProgressDetail(const std::string &) override {}
    void ProgressMax(int) override {}
    void ProgressValue(int) override {}
    void ProgressClose() override {}
    bool ProgressVisible() const override { return false; }
    void DoEvents() override {}
    bool ProgressCancelling() const override { return false; }

    std::string LastMessage; // what a failing target shows beside its input
};

// The process's own state folder (GELVANE_HOME), made on first use.
const std::string &FuzzHome();
// Writes the input to `relative` under FuzzHome() and returns the full path.
std::string WriteInput(std::string_view relative, const uint8_t *data, size_t size);
// No map repair, no thumbnails, every property read (none disabled after the open).
Settings QuietSettings();

} // namespace gelvane::fuzz
