#include "qrbill/Trans.h"

#include "data/TagList.h"

namespace wordbm {

Trans::Trans() {
    add("ZahlteilTX", "Zahlteil", "Section paiement", "Sezione pagamento", "Payment part");
    add("KontoAnTX", "Konto / Zahlbar an", "Compte / Payable à", "Conto / Pagabile a",
        "Account / Payable to");
    add("ReferenzTX", "Referenz", "Référence", "Riferimento", "Reference");
    add("ZusatzTX", "Zusätzliche Informationen", "Informations additionnelles", "Informazioni aggiuntive",
        "Additional information");
    add("WaehrungTX", "Währung", "Monnaie", "Valuta", "Currency");
    add("BetragTX", "Betrag", "Montant", "Importo", "Amount");
    add("EmpfangsscheinTX", "Empfangsschein", "Récépissé", "Ricevuta", "Receipt");
    add("AnnahmestelleTX", "Annahmestelle", "Point de dépôt", "Punto di accettazione", "Acceptance point");
    add("AbzutrennenTX", "Vor der Einzahlung abzutrennen", "A détacher avant le versement",
        "Da staccare prima del versamento", "Separate before paying in");
    add("KontoVonTX", "Zahlbar durch", "Payable par", "Pagabile da", "Payable by");
}

void Trans::add(std::string key, std::string_view german, std::string_view french, std::string_view italian,
                std::string_view english) {
    TagList wordings;
    wordings.Value("D", std::string(german));
    wordings.Value("F", std::string(french));
    wordings.Value("I", std::string(italian));
    wordings.Value("E", std::string(english));
    entries_[std::move(key)] = wordings.List();
}

std::string Trans::Text(std::string_view key, std::string_view language) const {
    const auto entry = entries_.find(std::string(key));
    if (entry == entries_.end() || language.empty()) {
        return {};
    }
    TagList wordings;
    wordings.List(entry->second);
    return wordings.ValueString(language.substr(0, 1));
}

} // namespace wordbm
