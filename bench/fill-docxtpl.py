"""The merge benchmark's docxtpl peer: fills a copy of the sample form whose bookmarks are
{{Field}} placeholders, one document per invoice row (a row with RgDatum) of a cp1252 control
file, named after the invoice number.

    /usr/bin/python3 bench/fill-docxtpl.py TEMPLATE.docx CONTROL.csv OUT_DIR
"""
import pathlib
import sys

from docxtpl import DocxTemplate


def rows(path):
    lines = pathlib.Path(path).read_bytes().decode("cp1252").split("\r\n")
    header = lines[0].split(";")
    for line in lines[1:]:
        if line:
            row = dict(zip(header, line.split(";")))
            if row.get("RgDatum"):
                yield row


def main():
    template, control, out = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    out.mkdir(parents=True, exist_ok=True)
    for row in rows(control):
        document = DocxTemplate(template)
        document.render(row)
        document.save(out / f"{row['RgNummer']}.docx")


if __name__ == "__main__":
    main()
