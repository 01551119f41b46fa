// The merge benchmark's docxtemplater peer: fills a copy of the sample form whose bookmarks are
// {Field} placeholders, one document per invoice row (a row with RgDatum) of a cp1252 control
// file, named after the invoice number.
//
//   NODE_PATH=<folder with docxtemplater and pizzip> node bench/fill-docxtemplater.js TEMPLATE.docx CONTROL.csv OUT_DIR
"use strict";
const fs = require("fs");
const path = require("path");
const PizZip = require("pizzip");
const Docxtemplater = require("docxtemplater");

const [template, control, out] = process.argv.slice(2);
fs.mkdirSync(out, { recursive: true });
const content = fs.readFileSync(template);
const lines = new TextDecoder("windows-1252").decode(fs.readFileSync(control)).split("\r\n");
const header = lines[0].split(";");
for (const line of lines.slice(1)) {
    if (!line) {
        continue;
    }
    const values = line.split(";");
    const row = Object.fromEntries(header.map((name, i) => [name, values[i] ?? ""]));
    if (!row.RgDatum) {
        continue;
    }
    const document = new Docxtemplater(new PizZip(content), { paragraphLoop: true, linebreaks: true });
    document.render(row);
    fs.writeFileSync(path.join(out, `${row.RgNummer}.docx`),
                     document.getZip().generate({ type: "nodebuffer", compression: "DEFLATE" }));
}
