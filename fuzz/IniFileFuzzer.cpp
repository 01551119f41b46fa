// The INI file on any bytes: it reads, answers for the settings section, and what it would write
// reads again.
#include "ScratchFile.h"
#include "settings/IniFile4.h"

using wordbm::IniFile4;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchFile scratch("KDX6.ini");
    scratch.write(data, size);
    IniFile4 ini;
    ini.ReadFile(scratch.path());
    const std::string written = ini.Stream();
    for (const char* key : {"Options", "MergerTemplate", "DOCOpen"}) {
        ini.Value("Billing\\Merger", key);
        ini.ValueFull("Billing\\Merger", key);
    }
    ini.Value("Billing\\Merger", "Options", "PDF;Close");
    ini.Section("Billing\\Merger");
    ini.RemoveSection("Billing\\Merger");

    scratch.write(written);
    IniFile4 again;
    again.ReadFile(scratch.path());
    again.Stream();
    return 0;
}
