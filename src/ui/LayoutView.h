#pragma once

#include "engine/layout/FormLayout.h"
#include "engine/word/Forward.h"

#include <QWidget>
#include <functional>
#include <memory>

class QComboBox;
class QLabel;
class QPdfDocument;
class QScrollArea;
class QTemporaryDir;

namespace wordbm {

class KnownFields;
class LayoutPages;

// The working form as it prints, every page, with its bookmarks and merge fields framed where they
// print. A click on a page puts the word processor's insertion point at the character under the
// mouse, in whichever story prints there; a click in the frame of a field selects what it frames. Rendered by
// the office worker, off the window's thread, after every command while it is in view.
class LayoutView : public QWidget {
    Q_OBJECT
public:
    explicit LayoutView(QWidget* parent = nullptr);
    ~LayoutView() override;

    // Runs work where the engine's work runs; false when it cannot run now. Unset, it runs here.
    using Runner = std::function<bool(const std::function<void()>& work)>;
    void setRunner(Runner run) { run_ = std::move(run); }
    void setDocumentSource(std::function<word::DocumentPtr()> source) { source_ = std::move(source); }
    // The known fields that tell engine bookmarks from unknown ones; must outlive the view.
    void setFields(const KnownFields* fields) { fields_ = fields; }

    // Renders the form as it stands now; false (the reason shown) when there is nothing to show.
    bool render();
    // The form changed: rendered now when `inView`, else when it next comes into view.
    void follow(bool inView);
    bool stale() const { return stale_; }

    // What is shown; null before the first rendering.
    const FormLayout* layout() const { return layout_.get(); }
    LayoutPages& pages() { return *pages_; }
    // Zoom in percent of the printed size.
    void setZoom(int percent);

signals:
    // A frame was clicked: the field (or unknown bookmark) it stands for.
    void fieldChosen(const QString& field);

private:
    void showReason(const QString& reason);
    void pageClicked(int page, QPointF point);

    QComboBox* cbxZoom_ = nullptr;
    QLabel* lblLayout_ = nullptr;
    QScrollArea* scroll_ = nullptr;
    LayoutPages* pages_ = nullptr;
    QPdfDocument* pdf_ = nullptr;
    std::unique_ptr<QTemporaryDir> folder_;
    std::shared_ptr<FormLayout> layout_;
    Runner run_;
    std::function<word::DocumentPtr()> source_;
    const KnownFields* fields_ = nullptr;
    bool stale_ = false;
};

} // namespace wordbm
