#pragma once

#include "engine/ports/SlipPort.h"
#include "engine/slip/SlipBoxFitter.h"
#include "engine/slip/SlipLayout.h"
#include "engine/slip/SlipMarks.h"
#include "qrbill/Trans.h"

#include <string>
#include <string_view>

namespace wordbm {

class QRImage;
class UserInterface;

// The QR payment slip ("Einzahlungsschein QR"): lays the separation text, the receipt and the
// payment part into a form as three drawing canvases at the foot of the page, and fills their
// placeholders per invoice.
//
// The canvases are anchored in the paragraph that holds the cursor when the build starts. A form
// opened afresh has its cursor at the start of the main text, so the slip goes to the foot of the
// first page and stays there however long the invoice's text grows.
class modESQR final : public SlipPort {
public:
    // ui and qrImage must outlive the builder; `imageFolder` holds the corner-mark pictures. The
    // merge run fills from several threads one placeholder at a time (it holds the image slot's
    // lock), which is what keeps the shared picture safe.
    modESQR(UserInterface& ui, QRImage& qrImage, std::string imageFolder = SlipMarks::DefaultFolder());

    void Build(word::Application& word, word::Document& doc, const SlipChoices& choices) override;
    void Fill(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
              const std::string& field, const QRCoder& coder, std::int32_t row) override;
    // Shortens the message and address lines of a box they would run out of.
    void Finish(word::Document& doc, const QRCoder& coder, std::int32_t row) override;

    void FillStandIn(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
                     const std::string& field, const QRCoder& coder, std::int32_t row,
                     const std::function<std::string()>& standIn) override;
    // Which values are blank and which marks go in: that decides headings, marks and what is left
    // of an emptied placeholder.
    std::string Shape(const QRCoder& coder, std::int32_t row) const override;
    // The written value without the line breaks behind it, which the stand-in had too.
    std::string Value(const std::string& field, const QRCoder& coder, std::int32_t row) const override;
    std::unique_ptr<SlipFitCheck> FitCheck(word::Document& doc,
                                           const std::vector<std::string>& standIns) const override;

    // Whether a placeholder (bookmark field) belongs to the slip: its first four characters are "ESQR".
    static bool IsSlipName(std::string_view name);

private:
    void deleteCanvases(word::Document& doc);
    void addCanvas(word::Application& word, word::Document& doc, const word::RangePtr& anchor,
                   const SlipLayout::Canvas& layout, bool cutMark);
    void removeBrackets(word::Application& word, word::Bookmark& placeholder);
    // The named value of the row, written over the placeholder; a name without a value is left alone.
    void writeValue(word::Document& doc, word::Bookmark& placeholder, const std::string& field,
                    const QRCoder& coder, std::int32_t row, const std::function<std::string()>* standIn);
    void fill(word::Application& word, word::Document& doc, word::Bookmark& placeholder,
              const std::string& field, const QRCoder& coder, std::int32_t row,
              const std::function<std::string()>* standIn);
    // A heading stays unless it belongs to a value the row leaves empty.
    void keepOrClearHeading(word::Bookmark& placeholder, const std::string& field, const QRCoder& coder,
                            std::int32_t row);
    void pasteQRCode(word::Application& word, word::Bookmark& placeholder, const QRCoder& coder,
                     std::int32_t row);

    UserInterface& ui_;
    QRImage& qrImage_;
    SlipMarks marks_;
    SlipBoxFitter fitter_;
    Trans texts_;
    // Kept for the duration of a build.
    bool fieldBorders_ = false;
    std::string language_;
};

} // namespace wordbm
