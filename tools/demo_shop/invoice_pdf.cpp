#include "tools/demo_shop/invoices.h"

namespace demo_shop {

namespace {

// Parentheses and backslashes have a meaning inside a PDF string.
QByteArray pdfString(const QString& text)
{
    QByteArray bytes = text.toLatin1();
    for (const char c : {'\\', '(', ')'})
        bytes.replace(QByteArray(1, c), QByteArray("\\") + c);
    return '(' + bytes + ')';
}

QByteArray pageContent(const QStringList& lines)
{
    QByteArray content = "BT /F1 16 Tf 60 760 Td 24 TL";
    for (const QString& line : lines)
        content += ' ' + pdfString(line) + " Tj T*";
    return content + " ET";
}

} // namespace

QByteArray onePagePdf(const QStringList& lines)
{
    const QByteArray content = pageContent(lines);
    const QByteArray page = "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R "
                            "/Resources << /Font << /F1 5 0 R >> >> >>";
    const QByteArrayList objects {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        page,
        "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content
            + "\nendstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>",
    };

    QByteArray pdf = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
    QByteArray table = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects.at(i) + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    const qsizetype start = pdf.size();
    return pdf + "xref\n0 " + count + '\n' + table + "trailer\n<< /Size " + count
        + " /Root 1 0 R >>\nstartxref\n" + QByteArray::number(start) + "\n%%EOF\n";
}

} // namespace demo_shop
