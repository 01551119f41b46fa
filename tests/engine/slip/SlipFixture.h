#pragma once

#include "data/CSVfile.h"
#include "data/KnownFields.h"
#include "engine/ScriptedUserInterface.h"
#include "engine/SlipChoices.h"
#include "engine/modESQR.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/ooxml/TemporaryFolder.h"
#include "engine/word/Forward.h"
#include "engine/word/WordConstants.h"
#include "qrbill/QRCoder.h"
#include "qrbill/QRImage.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace wordbm::slip::test {

std::string corpusPath(const std::string& name);

// Data lines of the slip rows the tests fill from.
enum Row : std::int32_t { Normal = 1, NoAmount = 2, NoDebtor = 3, NoReferenz = 4 };

// A copy of a corpus form opened in the embedded word processor, a slip builder with the committed
// corner marks, and a control file with one row per case worth filling.
class SlipTest : public ::testing::Test {
protected:
    SlipTest();

    // A corpus document by name, or a form by its path.
    void open(const std::string& form);
    void build(const SlipChoices& choices = {});
    // Fills every slip placeholder of the document from `row`, as the merge run does.
    void fill(std::int32_t row);

    // The main story's shapes named `name`, in document order.
    std::vector<word::ShapePtr> shapesNamed(const std::string& name);
    word::ShapePtr canvas(const std::string& name);
    int canvasCount();
    // The text of the k-th item (1-based) of a canvas.
    static std::string boxText(const word::ShapePtr& canvas, int item);
    static int picturesIn(const word::ShapePtr& canvas);
    // The fields of the document's bookmarks that belong to the slip, sorted.
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
