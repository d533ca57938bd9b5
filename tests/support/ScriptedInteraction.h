#pragma once
// Interaction for tests: answers come from queues, every message is recorded. A
// question that was not scripted fails the test (and is answered with the default
// button / Cancel); so do answers left unused when the interaction is destroyed or
// checked with checkAllUsed(). Message boxes with only OK are notices and take no answer.
#include "core/platform/Interaction.h"

#include <deque>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace gelvane::test {

struct RecordedMessage {
    std::string Text;
    std::string Title;
    MsgIcon Icon;
    MsgButtons Buttons;
    bool operator==(const RecordedMessage &) const = default;
};

inline std::ostream &operator<<(std::ostream &out, const RecordedMessage &m) {
    return out << '"' << m.Text << "\" \"" << m.Title << "\" icon " << static_cast<int>(m.Icon) << " buttons "
               << static_cast<int>(m.Buttons);
}

class ScriptedInteraction : public Interaction {
public:
    ScriptedInteraction();
    ~ScriptedInteraction() override;
    ScriptedInteraction(const ScriptedInteraction &) = delete;
    ScriptedInteraction &operator=(const ScriptedInteraction &) = delete;

    // How a fault of the script fails the test; GoogleTest's ADD_FAILURE unless replaced
    // (a Qt Test program passes QTest::qFail).
    void onFailure(std::function<void(const std::string &)> fail) { m_fail = std::move(fail); }
    // Fails the test for every answer still queued, and drops them.
    void checkAllUsed();

    // Queues of answers, used in order.
    void nextAnswer(MsgResult answer) { m_answers.push_back(answer); }
    void nextInput(std::optional<std::string> text) { m_inputs.push_back(std::move(text)); }
    void nextFile(std::optional<std::string> path) { m_files.push_back(std::move(path)); }
    void nextFolder(std::optional<std::string> path) { m_folders.push_back(std::move(path)); }
    void nextColor(std::optional<RgbColor> color) { m_colors.push_back(color); }
    void nextMapChoice(int index) { m_mapChoices.push_back(index); }
    // Presses Esc in the progress window at the n-th DoEvents call (1-based).
    void cancelAtDoEvents(int n) { m_cancelAt = n; }

    const std::vector<RecordedMessage> &messages() const { return m_messages; }
    const std::vector<FileDialogRequest> &fileRequests() const { return m_fileRequests; }
    const std::vector<std::string> &statusLines() const { return m_statusLines; }
    const std::vector<std::string> &mapQuestions() const { return m_mapQuestions; }
    // The candidates of each map question, in order.
    const std::vector<std::vector<MapCandidate>> &mapCandidates() const { return m_mapCandidates; }
    int doEventsCount() const { return m_doEvents; }
    bool progressEverShown() const { return m_progressShown; }
    std::string status() const { return m_status; }

    MsgResult MessageBox(const std::string &text, const std::string &title, MsgIcon icon, MsgButtons buttons) override;
    std::optional<std::string> InputBox(const std::string &prompt, const std::string &title,
                                        const std::string &defaultText) override;
    std::optional<std::string> ChooseFile(const FileDialogRequest &request) override;
    std::optional<std::string> ChooseFolder(const std::string &start, const std::string &title) override;
    std::optional<RgbColor> ChooseColor(const RgbColor &initial) override;
    int ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) override;
    void ProgressShow(const std::string &title, const std::string &status, int barMax) override;
    void ProgressStatus(const std::string &status) override;
    void ProgressDetail(const std::string &) override {}
    void ProgressMax(int) override {}
    void ProgressValue(int) override {}
    void ProgressClose() override;
    bool ProgressVisible() const override { return m_visible; }
    void DoEvents() override;
    bool ProgressCancelling() const override { return m_status == kCancelling; }

private:
    // Takes the next answer of `queue`, or fails the test for an unscripted `question`.
    template <class T> T take(std::deque<T> &queue, T fallback, const std::string &question);

    std::function<void(const std::string &)> m_fail;
    std::deque<MsgResult> m_answers;
    std::deque<std::optional<std::string>> m_inputs, m_files, m_folders;
    std::deque<std::optional<RgbColor>> m_colors;
    std::deque<int> m_mapChoices;
    std::vector<RecordedMessage> m_messages;
    std::vector<FileDialogRequest> m_fileRequests;
    std::vector<std::string> m_statusLines;
    std::vector<std::string> m_mapQuestions;
    std::vector<std::vector<MapCandidate>> m_mapCandidates;
    std::string m_status;
    bool m_visible = false;
    bool m_progressShown = false;
    int m_doEvents = 0;
    int m_cancelAt = 0;
};

} // namespace gelvane::test
