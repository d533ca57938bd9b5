#pragma once
// The open and save dialogs with their optional preview panel, and the folder chooser.
#include "core/platform/Interaction.h"

#include <QCheckBox>
#include <QLabel>
#include <QStringList>
#include <QWidget>

#include <optional>
#include <string>

namespace gelvane {

class ThumbnailCache;

// "Name|*.a;*.b|All files|*.*" as Qt name filters. Patterns also match their
// upper-case spelling, and "*.*" means every file, as users of the format expect.
QStringList NameFiltersOf(const std::string &filter);

// The preview beside the file list: a 95 x 95 picture and "Show preview".
class PreviewPanel : public QWidget {
    Q_OBJECT
public:
    explicit PreviewPanel(ThumbnailCache &thumbnails, QWidget *parent = nullptr);

    // Shows what the selected `path` previews to (nothing for folders and
    // missing paths); does nothing while "Show preview" is clear.
    void PreviewSelectedFile(const QString &path);
    QLabel *picture() const { return m_picture; }
    QCheckBox *checkBox() const { return m_check; }

private:
    void ShowKey(const std::string &key);

    ThumbnailCache &m_thumbnails;
    QLabel *m_picture;
    QCheckBox *m_check;
};

// Shows the open (or, with request.ForSave, the save) dialog. The chosen full
// path, or nothing on Cancel. With request.Preview the panel previews each
// selected file; the preview list of `thumbnails` is emptied afterwards.
std::optional<std::string> ShowFileDialog(QWidget *parent, const FileDialogRequest &request,
                                          ThumbnailCache &thumbnails);

// The folder chooser, starting in `start`; nothing on Cancel.
std::optional<std::string> ShowFolderDialog(QWidget *parent, const std::string &start, const std::string &title);

} // namespace gelvane
