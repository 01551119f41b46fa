#pragma once

#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/slip/modESQR.h"
#include "engine/word/Shapes.h"
#include "engine/word/WordConstants.h"
#include "kit/ScriptedUserInterface.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace wordbm::slip::test {

// Data lines of the fixture's control file.
enum Row : std::int32_t { Normal = 1, NoAmount = 2, NoDebtor = 3, NoReferenz = 4 };

// A form in the embedded word processor, a slip builder with the committed corner marks, and a
// control file with a row for each case worth filling.
class SlipTest : public ::testing::Test {
protected:
    SlipTest();

    // A corpus document by name, or a form by its path (copied into the fixture's folder first).
    void open(const std::string& form);
    void build(const SlipChoices& choices = {}) { slip.Build(*word, *doc, choices); }
    // Fills every slip placeholder from `row`, as the merge run does.
    void fill(std::int32_t row);

    std::vector<word::ShapePtr> shapesNamed(const std::string& name);
    word::ShapePtr canvas(const std::string& name) { return shapesNamed(name).at(0); }
    int countOf(int type);
    static std::string boxText(const word::ShapePtr& canvas, int item);
    static int picturesIn(const word::ShapePtr& canvas);
    // The fields of the document's slip bookmarks.
    std::vector<std::string> slipFields();

    ooxml::TemporaryFolder folder;
    std::shared_ptr<ooxml::DocxApplication> word;
    word::DocumentPtr doc;
    ScriptedUserInterface ui;
    QRImage qrImage;
    modESQR slip{ui, qrImage, WORDBM_SLIP_IMAGE_DIR};
    CSVfile csv;
    QRCoder coder{csv};
    KnownFields fields;
};

} // namespace wordbm::slip::test
