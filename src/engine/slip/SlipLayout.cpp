#include "engine/slip/SlipLayout.h"

namespace wordbm {

namespace {

using Entry = SlipLayout::Entry;

SlipLayout::Canvas makeSeparation() {
    // A single line; it gets the receipt's small sizes, the payment part's would not fit the 8 mm.
    return {"ST",
            70,
            183,
            70,
            8,
            {11, 6, 8},
            {{0, 0, 70, 8, {Entry{"Abzutrennen", "Vor der Einzahlung abzutrennen"}}}}};
}

SlipLayout::Canvas makeReceipt() {
    return {"ET",
            0,
            191,
            62,
            105,
            {11, 6, 8},
            {
                {0, 0, 62, 105, {}},
                {5, 5, 52, 7, {Entry{"Empfangsschein", "Empfangsschein", false}}, true},
                {5,
                 12,
                 52,
                 56,
                 {Entry{"KontoAn", "Konto / Zahlbar an"}, Entry{"Referenz", "Referenz"},
                  Entry{"KontoVon", "Zahlbar durch"}}},
                {5, 68, 20, 14, {Entry{"Waehrung", "Währung"}}},
                {25, 68, 32, 14, {Entry{"Betrag", "Betrag"}}},
                {5, 82, 52, 18, {Entry{"Annahmestelle", "Annahmestelle"}}},
            }};
}

SlipLayout::Canvas makePaymentPart() {
    return {"ZT",
            62,
            191,
            148,
            105,
            {11, 8, 10},
            {
                {0, 0, 148, 105, {}},
                {5, 5, 51, 7, {Entry{"Zahlteil", "Zahlteil", false}}, true},
                {5, 17, 51, 51, {Entry{"QRCode", "QRCode", true, false}}},
                {5, 68, 20, 22, {Entry{"Waehrung", "Währung"}}},
                {25, 68, 31, 22, {Entry{"Betrag", "Betrag"}}},
                {56,
                 5,
                 87,
                 85,
                 {Entry{"KontoAn", "Konto / Zahlbar an"}, Entry{"Referenz", "Referenz"},
                  Entry{"Zusatz", "Zusätzliche Information"}, Entry{"KontoVon", "Zahlbar durch"}}},
                {5, 90, 138, 10, {Entry{"Info", ""}}},
            }};
}

} // namespace

const SlipLayout::Canvas& SlipLayout::separation() {
    static const Canvas canvas = makeSeparation();
    return canvas;
}

const SlipLayout::Canvas& SlipLayout::receipt() {
    static const Canvas canvas = makeReceipt();
    return canvas;
}

const SlipLayout::Canvas& SlipLayout::paymentPart() {
    static const Canvas canvas = makePaymentPart();
    return canvas;
}

float SlipLayout::points(float millimetres) {
    return millimetres / 10.0F * 72.0F / 2.54F;
}

} // namespace wordbm
