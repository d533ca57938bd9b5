#include "core/platform/Interaction.h"

#include <csignal>
#include <iostream>

namespace gelvane {

namespace {

volatile std::sig_atomic_t g_interrupted = 0;

void OnInterrupt(int) {
    g_interrupted = 1;
    std::signal(SIGINT, SIG_DFL);
}

} // namespace

void ConsoleInteraction::CatchInterrupt() {
    std::signal(SIGINT, OnInterrupt);
}

bool ConsoleInteraction::ProgressCancelling() const {
    return m_status == kCancelling || g_interrupted != 0;
}

MsgResult ConsoleInteraction::MessageBox(const std::string &text, const std::string &title, MsgIcon,
                                         MsgButtons buttons) {
    std::cerr << title << ": " << text << '\n';
    switch (buttons) {
    case MsgButtons::YesNo:
    case MsgButtons::YesNoCancel:
        return MsgResult::Yes;
    default:
        return MsgResult::OK;
    }
}

std::optional<std::string> ConsoleInteraction::InputBox(const std::string &prompt, const std::string &title,
                                                        const std::string &defaultText) {
    std::cerr << title << ": " << prompt << '\n';
    return defaultText;
}

std::optional<std::string> ConsoleInteraction::ChooseFile(const FileDialogRequest &) {
    return std::nullopt;
}

std::optional<std::string> ConsoleInteraction::ChooseFolder(const std::string &, const std::string &) {
    return std::nullopt;
}

std::optional<RgbColor> ConsoleInteraction::ChooseColor(const RgbColor &) {
    return std::nullopt;
}

int ConsoleInteraction::ChooseMap(const std::string &, const std::vector<MapCandidate> &candidates) {
    return candidates.empty() ? -1 : 0;
}

void ConsoleInteraction::ProgressShow(const std::string &, const std::string &status, int) {
    m_visible = true;
    m_status = status;
}

void ConsoleInteraction::ProgressStatus(const std::string &status) {
    m_status = status;
}

void ConsoleInteraction::ProgressDetail(const std::string &) {}
void ConsoleInteraction::ProgressMax(int) {}
void ConsoleInteraction::ProgressValue(int) {}

void ConsoleInteraction::ProgressClose() {
    m_visible = false;
    m_status.clear();
}

} // namespace gelvane
