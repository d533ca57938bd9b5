#include "support/ScriptedInteraction.h"

#include <gtest/gtest.h>

namespace gelvane::test {

ScriptedInteraction::ScriptedInteraction() : m_fail([](const std::string &fault) { ADD_FAILURE() << fault; }) {}

ScriptedInteraction::~ScriptedInteraction() {
    checkAllUsed();
}

void ScriptedInteraction::checkAllUsed() {
    const size_t left =
        m_answers.size() + m_inputs.size() + m_files.size() + m_folders.size() + m_colors.size() + m_mapChoices.size();
    if (left > 0)
        m_fail(std::to_string(left) + " scripted answer(s) left unused");
    m_answers.clear();
    m_inputs.clear();
    m_files.clear();
    m_folders.clear();
    m_colors.clear();
    m_mapChoices.clear();
}

template <class T> T ScriptedInteraction::take(std::deque<T> &queue, T fallback, const std::string &question) {
    if (queue.empty()) {
        m_fail("a question that was not scripted: " + question);
        return fallback;
    }
    T answer = std::move(queue.front());
    queue.pop_front();
    return answer;
}

MsgResult ScriptedInteraction::MessageBox(const std::string &text, const std::string &title, MsgIcon icon,
                                          MsgButtons buttons) {
    m_messages.push_back({text, title, icon, buttons});
    if (buttons == MsgButtons::OK)
        return MsgResult::OK;
    const MsgResult first = buttons == MsgButtons::OKCancel ? MsgResult::OK : MsgResult::Yes;
    return take(m_answers, first, "message box \"" + text + "\"");
}

std::optional<std::string> ScriptedInteraction::InputBox(const std::string &prompt, const std::string &title,
                                                         const std::string &) {
    m_messages.push_back({prompt, title, MsgIcon::None, MsgButtons::OKCancel});
    return take(m_inputs, std::optional<std::string>(), "input box \"" + prompt + "\"");
}

std::optional<std::string> ScriptedInteraction::ChooseFile(const FileDialogRequest &request) {
    m_fileRequests.push_back(request);
    return take(m_files, std::optional<std::string>(), "file dialog \"" + request.Title + "\"");
}

std::optional<std::string> ScriptedInteraction::ChooseFolder(const std::string &, const std::string &title) {
    m_messages.push_back({title, "ChooseFolder", MsgIcon::None, MsgButtons::OKCancel});
    return take(m_folders, std::optional<std::string>(), "folder choice \"" + title + "\"");
}

std::optional<RgbColor> ScriptedInteraction::ChooseColor(const RgbColor &) {
    return take(m_colors, std::optional<RgbColor>(), "colour choice");
}

int ScriptedInteraction::ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) {
    m_mapQuestions.push_back(wanted);
    m_mapCandidates.push_back(candidates);
    return take(m_mapChoices, -1, "map choice for \"" + wanted + "\"");
}

void ScriptedInteraction::ProgressShow(const std::string &, const std::string &status, int) {
    m_visible = m_progressShown = true;
    ProgressStatus(status);
}

void ScriptedInteraction::ProgressStatus(const std::string &status) {
    m_status = status;
    m_statusLines.push_back(status);
}

void ScriptedInteraction::ProgressClose() {
    m_visible = false;
    m_status.clear();
}

void ScriptedInteraction::DoEvents() {
    ++m_doEvents;
    if (m_cancelAt > 0 && m_doEvents >= m_cancelAt && m_visible) {
        m_status = kCancelling;
        m_cancelAt = 0;
    }
}

} // namespace gelvane::test
