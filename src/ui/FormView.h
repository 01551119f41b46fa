#pragma once

#include "engine/word/Forward.h"

#include <QTextEdit>
#include <vector>

namespace wordbm {

// The working form as text: the main text, then every header, footer and text box under a label
// of its own, with bookmarks and fields marked. A click or a selection in a story's text becomes
// the word processor's selection in that story, so that a bookmark inserted "at the cursor" goes
// where the person clicked. Labels belong to no story and select nothing.
class FormView : public QTextEdit {
    Q_OBJECT
public:
    explicit FormView(QWidget* parent = nullptr);

    // Rereads every story of the document; null clears the view.
    void showDocument(const word::DocumentPtr& doc);

private:
    // Where one story's text stands in the view, its final paragraph mark not counted.
    struct StoryText {
        int start = 0;
        int length = 0;
        word::RangePtr range;
    };

    void addStory(QTextCursor& cursor, const std::string& label, const word::RangePtr& range);
    void markBookmarksAndFields(const StoryText& story);
    void mark(const StoryText& story, long start, long end, const QColor& colour, const QString& tip);
    void selectInDocument();

    std::vector<StoryText> stories_;
};

} // namespace wordbm
