#include "FaultyWord.h"

#include "FaultyApplication.h"
#include "engine/ooxml/DocxApplication.h"
#include "engine/word/AutomationError.h"

namespace wordbm::testing {

std::function<word::ApplicationPtr()> FaultyWord::factory() {
    return [this]() -> word::ApplicationPtr {
        if (refuseStart) {
            throw AutomationError("Word.Application kann nicht erstellt werden.");
        }
        auto app = std::make_shared<FaultyApplication>(ooxml::DocxApplication::create(), refused);
        const std::lock_guard lock(mutex_);
        apps.push_back(app);
        return app;
    };
}

} // namespace wordbm::testing
