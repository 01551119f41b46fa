#include "data/ExportFieldCatalogue.h"

#include <string>

namespace wordbm {

const std::vector<ExportField>& ExportFieldCatalogue::Rows() {
    // The texts are the suite's own, misspellings ("Greschäftsart", "KlientAdren") included;
    // rows 41 and 45 really share the SqlName "Amount", and the due date of row 55 is typed 1.
    static const std::vector<ExportField> rows{
        {1, "OwnerA1", "BueroAdr1", ExportFieldTyp::Text, "Adresszeile des Rechnungsstellers 1",
         "Einstellungen", 20},
        {2, "OwnerA2", "BueroAdr2", ExportFieldTyp::Text, "Adresszeile des Rechnungsstellers 2",
         "Einstellungen", 20},
        {3, "OwnerA3", "BueroAdr3", ExportFieldTyp::Text, "Adresszeile des Rechnungsstellers 3",
         "Einstellungen", 20},
        {4, "OwnerA4", "BueroAdr4", ExportFieldTyp::Text, "Adresszeile des Rechnungsstellers 4",
         "Einstellungen", 20},
        {5, "OwnerA5", "BueroAdr5", ExportFieldTyp::Text, "Adresszeile des Rechnungsstellers 5",
         "Einstellungen", 20},
        {6, "AccountText", "BankKto", ExportFieldTyp::Text, "Bankkonto", "Einstellungen", 20},
        {7, "BankA1", "BankAdr1", ExportFieldTyp::Text, "Adresszeile der Bank 1", "Einstellungen", 20},
        {8, "BankA2", "BankAdr2", ExportFieldTyp::Text, "Adresszeile der Bank 2", "Einstellungen", 20},
        {9, "BankA3", "BankAdr3", ExportFieldTyp::Text, "Adresszeile der Bank 3", "Einstellungen", 20},
        {10, "KeyName", "KliName", ExportFieldTyp::Text, "Klient Name", "Klient", 20},
        {11, "KlieExt1", "KliEx1", ExportFieldTyp::Text, "Klient Zusatztext 1", "Klient", 200},
        {12, "KlieExt2", "KliEx2", ExportFieldTyp::Text, "Klient Zusatztext 2", "Klient", 200},
        {13, "KlieExt3", "KliEx3", ExportFieldTyp::Text, "Klient Zusatztext 3", "Klient", 200},
        {14, "KlieExt4", "KliEx4", ExportFieldTyp::Text, "Klient Zusatztext 4", "Klient", 200},
        {15, "KlieExt5", "KliEx5", ExportFieldTyp::Text, "Klient Zusatztext 5", "Klient", 200},
        {16, "AccountName", "GeschNam", ExportFieldTyp::Text, "Geschäft Name", "Geschäft", 20},
        {17, "Text", "GeschTxt", ExportFieldTyp::Text, "Beschreibung des Geschäfts", "Geschäft", 20},
        {18, "DateBegin", "GeschVon", ExportFieldTyp::Date, "Beginn des Geschäfts", "Geschäft", 20},
        {19, "DateEnd", "GeschBis", ExportFieldTyp::Date, "Abschluss des Geschäfts", "Geschäft", 20},
        {20, "ProjExt1", "GeschEx1", ExportFieldTyp::Text, "Geschäft Zusatztext 1", "Geschäft", 200},
        {21, "ProjExt2", "GeschEx2", ExportFieldTyp::Text, "Geschäft Zusatztext 2", "Geschäft", 200},
        {22, "ProjExt3", "GeschEx3", ExportFieldTyp::Text, "Geschäft Zusatztext 3", "Geschäft", 200},
        {23, "ProjExt4", "GeschEx4", ExportFieldTyp::Text, "Geschäft Zusatztext 4", "Geschäft", 200},
        {24, "ProjExt5", "GeschEx5", ExportFieldTyp::Text, "Geschäft Zusatztext 5", "Geschäft", 200},
        {25, "DepartmentNameFull", "Abteil", ExportFieldTyp::Text, "Abteilung", "Geschäft / Abteilung", 20},
        {26, "PersonNameFull", "Person", ExportFieldTyp::Text, "Für das Geschäft zuständige Person",
         "Geschäft / Person", 20},
        {27, "ProjectTypeNameFull", "GeschArt", ExportFieldTyp::Text, "Art des Geschäfts",
         "Geschäft / Greschäftsart", 20},
        {28, "BesrItem.ID", "RgID", ExportFieldTyp::Text, "Interne ID der Rechnung", "Rechnung", 20},
        {29, "BesrRunDate", "RgDatum", ExportFieldTyp::Date, "Datum des Rechnungslaufs",
         "Rechnung / Rechnungslauf", 20},
        {30, "AccountClient", "KliKonto", ExportFieldTyp::Text, "Klienten- oder Geschäftskonto",
         "Rechnung / Geschäft", 20},
        {31, "BesrItem.PaymentLimit", "RgLimit", ExportFieldTyp::Number, "Zahlungsfrist in Tagen", "Rechnung",
         20},
        {32, "KlientAdr1", "KliAdr1", ExportFieldTyp::Text, "Adresszeile des KlientAdren 1", "Klient", 20},
        {33, "KlientAdr2", "KliAdr2", ExportFieldTyp::Text, "Adresszeile des KlientAdren 2", "Klient", 20},
        {34, "KlientAdr3", "KliAdr3", ExportFieldTyp::Text, "Adresszeile des KlientAdren 3", "Klient", 20},
        {35, "KlientAdr4", "KliAdr4", ExportFieldTyp::Text, "Adresszeile des KlientAdren 4", "Klient", 20},
        {36, "KlientAdr5", "KliAdr5", ExportFieldTyp::Text, "Adresszeile des KlientAdren 5", "Klient", 20},
        {37, "BesrTn", "BesrTn", ExportFieldTyp::Text, "BESR Teilnehmernummer", "Einstellungen", 30},
        {38, "AmountAccount", "KliKto", ExportFieldTyp::Number, "Klient Kassaverhandlungen", "Rechnung", 20},
        {39, "AmountCharges", "KliGebu", ExportFieldTyp::Number, "Klient Gebühren", "Rechnung", 20},
        {40, "AmountExpenses", "KliAusl", ExportFieldTyp::Number, "Klient Auslagen", "Rechnung", 20},
        {41, "Amount", "KliTot", ExportFieldTyp::Number, "Klient Total", "Rechnung", 20},
        {42, "VatRate", "MWSTSatz", ExportFieldTyp::Number, "Mehrwertsteuer-Satz", "Rechnung", 20},
        {43, "AmountVat", "KliMWST", ExportFieldTyp::Number, "Klient MWST", "Rechnung", 20},
        {44, "VatID", "MWSTID", ExportFieldTyp::Text, "MWST-Nummer", "BESR / Einstellung", 20},
        {45, "Amount", "KliTot2", ExportFieldTyp::Number, "Klient Total inkl. MWST", "Rechnung", 20},
        {46, "BesrBet", "BesrBet", ExportFieldTyp::Number, "BESR Betrag", "BESR / Rechnung", 20},
        {47, "BesrBetT", "BesrBetT", ExportFieldTyp::Text,
         "BESR Betrag (Text, anstatt Punkt zwei Leerstellen)", "BESR / Rechnung", 20},
        {48, "BesrBetTF", "BesrBetTF", ExportFieldTyp::Text, "BESR Betrag (Text, nur Frankenbetrag)",
         "BESR / Rechnung", 20},
        {49, "BesrBetTR", "BesrBetTR", ExportFieldTyp::Text, "BESR Betrag (Text, nur Rappenbetrag)",
         "BESR / Rechnung", 20},
        {50, "Ref", "BesrRefNr", ExportFieldTyp::Text,
         "BESR Referenznummer (in der Mitte des Einzahlungsscheins)", "BESR / Rechnung", 20},
        {51, "BesrCode", "BesrCode", ExportFieldTyp::Text,
         "BESR Codierzeile (unten auf dem Einzahlungsschein OCR-B-Schrift)", "BESR / Rechnung", 100},
        {52, "BesrRun.ID", "RgNummer", ExportFieldTyp::Text, "Rechnungsnummer", "Rechnung", 20},
        {53, "BesrRunID", "BesrRunNr", ExportFieldTyp::Text, "Rechnungslaufnummer", "Laufnummer", 20},
        {54, "ReferenceClient", "Referenz", ExportFieldTyp::Text, "Referenz des Klients", "Rechnung", 100},
        {55, "PaymentDue", "RgDue", ExportFieldTyp::Number, "Fälligkeitsdatum", "Rechnung", 20},
    };
    return rows;
}

std::string ExportFieldCatalogue::Text() {
    std::string text = std::string(Header) + "\r\n";
    for (const ExportField& field : Rows()) {
        text += std::to_string(field.Nr) + ";" + field.SqlName + ";" + field.PublicName + ";" +
                std::to_string(static_cast<int>(field.Typ)) + ";" + field.Description + ";" + field.Source +
                ";" + std::to_string(field.FieldLength) + "\r\n";
    }
    return text;
}

std::string ExportFieldCatalogue::FieldListText() {
    std::string text;
    for (const ExportField& field : Rows()) {
        text += field.PublicName + ";";
    }
    return text;
}

} // namespace wordbm
