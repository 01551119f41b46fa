#include "ui/FormView.h"

#include "engine/FormStories.h"
#include "engine/word/Bookmarks.h"
#include "engine/word/Document.h"
#include "engine/word/Fields.h"
#include "engine/word/Range.h"

#include <QScrollBar>
#include <QTextCursor>
#include <algorithm>

namespace wordbm {

namespace {

const QColor BookmarkColour(255, 236, 160);
const QColor FieldColour(190, 220, 255);
const QColor LabelColour(232, 232, 232);

// Word keeps paragraph ends as CR and table cell ends as BEL; one character each way keeps the
// offsets of the view and of the story equal.
QString viewText(const std::string& text) {
    QString result = QString::fromStdString(text);
    result.replace(QChar('\r'), QChar('\n'));
    result.replace(QChar('\a'), QChar(' '));
    return result;
}

} // namespace

FormView::FormView(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setPlaceholderText(QStringLiteral("Kein Word-Rechnungsformular geöffnet"));
    connect(this, &QTextEdit::cursorPositionChanged, this, &FormView::selectInDocument);
}

void FormView::showDocument(const word::DocumentPtr& doc) {
    const QSignalBlocker blocker(this);
    // An edit rereads the view; the person keeps the place they were looking at.
    const int scrolled = verticalScrollBar()->value();
    clear();
    stories_.clear();
    if (!doc) {
        return;
    }
    try {
        QTextCursor cursor(document());
        for (const FormStory& story : FormStories::list(*doc)) {
            addStory(cursor, story.label, story.range);
        }
    } catch (const std::exception& error) {
        stories_.clear();
        setPlainText(QStringLiteral("Das Formular kann nicht angezeigt werden: ") +
                     QString::fromUtf8(error.what()));
    }
    verticalScrollBar()->setValue(scrolled);
}

void FormView::addStory(QTextCursor& cursor, const std::string& label, const word::RangePtr& range) {
    const QString text = viewText(range->Text());
    if (!label.empty()) {
        // A blank line, then the label on a line of its own; the main text has none and starts at 0.
        QTextCharFormat labelFormat;
        labelFormat.setFontWeight(QFont::Bold);
        labelFormat.setBackground(LabelColour);
        cursor.insertBlock();
        cursor.insertText(QStringLiteral("── %1 ──").arg(QString::fromStdString(label)), labelFormat);
        cursor.insertBlock();
    }
    StoryText story{cursor.position(), static_cast<int>(text.size()), range};
    cursor.insertText(text, QTextCharFormat());
    if (text.endsWith(QChar('\n'))) {
        // The cursor never stands behind a story's last paragraph mark.
        --story.length;
    }
    stories_.push_back(story);
    markBookmarksAndFields(stories_.back());
}

void FormView::markBookmarksAndFields(const StoryText& story) {
    const auto bookmarks = story.range->Bookmarks();
    for (int i = 1; i <= bookmarks->Count(); ++i) {
        const auto bookmark = bookmarks->Item(i);
        mark(story, bookmark->Start(), bookmark->End(), BookmarkColour,
             QStringLiteral("Textmarke ") + QString::fromStdString(bookmark->Name()));
    }
    const auto fields = story.range->Fields();
    for (int i = 1; i <= fields->Count(); ++i) {
        const auto field = fields->Item(i);
        const auto code = field->Code();
        const auto result = field->Result();
        mark(story, std::min(code->Start(), result->Start()), std::max(code->End(), result->End()),
             FieldColour, QStringLiteral("Feld ") + QString::fromStdString(code->Text()));
    }
}

void FormView::mark(const StoryText& story, long start, long end, const QColor& colour, const QString& tip) {
    if (start < 0 || end < start || end > story.length + 1) {
        return;
    }
    QTextCursor cursor(document());
    cursor.setPosition(story.start + static_cast<int>(start));
    // A collapsed bookmark still shows, on the character after it.
    const long shown = end == start ? std::min<long>(end + 1, story.length) : end;
    cursor.setPosition(story.start + static_cast<int>(shown), QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setBackground(colour);
    format.setToolTip(tip);
    cursor.mergeCharFormat(format);
}

void FormView::selectInDocument() {
    const QTextCursor cursor = textCursor();
    const int from = cursor.selectionStart();
    for (StoryText& story : stories_) {
        if (from < story.start || from > story.start + story.length) {
            continue;
        }
        const int to = std::min(cursor.selectionEnd(), story.start + story.length);
        try {
            story.range->SetRange(from - story.start, to - story.start);
            story.range->Select();
        } catch (const std::exception&) {
            // The view may lag behind an edit; the next reading puts it right.
        }
        return;
    }
}

} // namespace wordbm
