#include "FaultyDocuments.h"

#include "FaultyApplication.h"

namespace wordbm::testing {

word::DocumentPtr FaultyDocuments::Open(const std::string& fileName) {
    application_->check();
    word::DocumentPtr document = application_->wrap(real_->Open(fileName));
    ++application_->opened;
    return document;
}

int FaultyDocuments::Count() const {
    application_->check();
    return real_->Count();
}

word::DocumentPtr FaultyDocuments::Item(int index) {
    application_->check();
    return application_->wrap(real_->Item(index));
}

} // namespace wordbm::testing
