#pragma once
// The one way the core asks the user for anything. The GUI implements it with
// Qt, the command line with ConsoleInteraction, tests with a scripted version.
// A cancelled dialog is an ordinary result (an empty optional), not an error.
#include <optional>
#include <string>
#include <vector>

namespace gelvane {

enum class MsgIcon { None, Exclamation, Question, Information, Critical };
enum class MsgButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class MsgResult { OK, Cancel, Yes, No };

// The program's name: the title of message boxes that state none.
inline constexpr const char *kProgramTitle = "Gelvane";
// The status line text that carries a cancel request of the progress window.
inline constexpr const char *kCancelling = "Cancelling...";

struct FileDialogRequest {
    std::string Title;
    std::string Filter;     // "Pose files|*.pz2|All files|*.*"
    std::string DefaultExt; // without the dot
    std::string InitialDir; // empty: the dialog's own choice
    std::string FileName;   // proposed file name
    int Flags = 0;          // the flag values below
    bool Preview = false;   // the thumbnail panel
    bool ForSave = false;
};

// The flag values of a file dialog request, and the two sets the program asks with.
inline constexpr int kOfnOverwritePrompt = 0x2;
inline constexpr int kOfnHideReadOnly = 0x4;
inline constexpr int kOfnPathMustExist = 0x800;
inline constexpr int kOfnFileMustExist = 0x1000;
// Several files may be chosen. The answer is then one text: with one file its full path,
// with more the folder, then each file name, all separated by the character 0.
inline constexpr int kOfnAllowMultiSelect = 0x200;
inline constexpr int kOfnExplorer = 0x80000;
inline constexpr int kOfnLongNames = 0x200000;
// Open: the file and its folder must exist, no read-only box.
inline constexpr int kOpenDialogFlags = kOfnFileMustExist | kOfnPathMustExist | kOfnHideReadOnly;
// Save: ask before overwriting, the folder must exist, no read-only box.
inline constexpr int kSaveDialogFlags = kOfnOverwritePrompt | kOfnPathMustExist | kOfnHideReadOnly;

struct RgbColor {
    int Red = 0, Green = 0, Blue = 0;
};

// One candidate of a map choice: the full path of a file that matched.
struct MapCandidate {
    std::string Path;
};

class Interaction {
public:
    virtual ~Interaction() = default;

    virtual MsgResult MessageBox(const std::string &text, const std::string &title = kProgramTitle,
                                 MsgIcon icon = MsgIcon::None, MsgButtons buttons = MsgButtons::OK) = 0;
    // Empty optional on Cancel.
    virtual std::optional<std::string> InputBox(const std::string &prompt, const std::string &title,
                                                const std::string &defaultText = {}) = 0;
    virtual std::optional<std::string> ChooseFile(const FileDialogRequest &request) = 0;
    virtual std::optional<std::string> ChooseFolder(const std::string &start, const std::string &title) = 0;
    virtual std::optional<RgbColor> ChooseColor(const RgbColor &initial) = 0;
    // Which of several files is meant for `wanted`; an index into `candidates`,
    // or -1 for "NO_MAP" / a closed window.
    virtual int ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) = 0;

    // The please-wait window. barMax < 0 hides the bar.
    virtual void ProgressShow(const std::string &title, const std::string &status, int barMax = -1) = 0;
    // Rewriting the status line drops a pending cancel request.
    virtual void ProgressStatus(const std::string &status) = 0;
    virtual void ProgressDetail(const std::string &detail) = 0;
    virtual void ProgressMax(int barMax) = 0;
    virtual void ProgressValue(int value) = 0;
    virtual void ProgressClose() = 0;
    virtual bool ProgressVisible() const = 0;
    // Lets pending window events run (the only moment an Esc can arrive).
    virtual void DoEvents() = 0;
    // True when the status line reads "Cancelling...".
    virtual bool ProgressCancelling() const = 0;
};

// Console version for the silent conversion: messages go to standard error,
// questions take their default (the first button), dialogs are cancelled.
class ConsoleInteraction : public Interaction {
public:
    MsgResult MessageBox(const std::string &text, const std::string &title, MsgIcon icon, MsgButtons buttons) override;
    std::optional<std::string> InputBox(const std::string &prompt, const std::string &title,
                                        const std::string &defaultText) override;
    std::optional<std::string> ChooseFile(const FileDialogRequest &request) override;
    std::optional<std::string> ChooseFolder(const std::string &start, const std::string &title) override;
    std::optional<RgbColor> ChooseColor(const RgbColor &initial) override;
    int ChooseMap(const std::string &wanted, const std::vector<MapCandidate> &candidates) override;
    void ProgressShow(const std::string &title, const std::string &status, int barMax) override;
    void ProgressStatus(const std::string &status) override;
    void ProgressDetail(const std::string &detail) override;
    void ProgressMax(int barMax) override;
    void ProgressValue(int value) override;
    void ProgressClose() override;
    bool ProgressVisible() const override { return m_visible; }
    void DoEvents() override {}
    // True on "Cancelling..." and, once CatchInterrupt ran, after a Ctrl-C.
    bool ProgressCancelling() const override;

    // From now on the first Ctrl-C asks the running work to stop at its next test, as Esc
    // does in the progress window; a second one ends the process at once.
    static void CatchInterrupt();

private:
    bool m_visible = false;
    std::string m_status;
};

} // namespace gelvane
