#include "bench/main_form_by_hand.h"

#include "accounting/payment_import_tables.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QVariant>
#include <QVBoxLayout>

namespace bench {

namespace {

/// A list: the shown texts and the values.
using Choices = QList<std::pair<QString, QVariant>>;

Choices skrChoices()
{
    return {{QString(), QVariant()},
            {QStringLiteral("SKR03"), 3},
            {QStringLiteral("SKR04"), 4},
            {QStringLiteral("SKR049"), 49}};
}

Choices roleChoices()
{
    Choices choices;
    for (const auto& [role, title] : payment_import::DefaultKontenTitel) {
        if (role != payment_import::VersandKleinunternehmer)
            choices.append({title, int(role)});
    }
    return choices;
}

Choices costCentreChoices()
{
    return {{QStringLiteral("Nicht zuordnen"), QString()},
            {QStringLiteral("Produktname"), QStringLiteral("PRODUCT_NAME")},
            {QStringLiteral("Zahlmethode"), QStringLiteral("PAYMENT_METHOD")},
            {QStringLiteral("Zahlmethode (kurz)"), QStringLiteral("PAYMENT_METHOD_S")}};
}

Choices b2cChoices()
{
    return {{QString(), 0},
            {QStringLiteral("OSS"), 1},
            {QStringLiteral("Lieferschwelle nicht überschritten"), 2},
            {QStringLiteral("Lieferschwelle überschritten"), 3}};
}

Choices dateChoices()
{
    return {{QStringLiteral("Automatisch"), 1},
            {QStringLiteral("Erstellt"), 2},
            {QStringLiteral("Abgeschlossen"), 3},
            {QStringLiteral("Bezahlt"), 4}};
}

QString bookingText(const char* key)
{
    return payment_import::DefaultFormBuchungsTexte.at(QString::fromLatin1(key));
}

/// A group of the main form, filled line by line.
class Group
{
public:
    Group(const QString& title, QWidget* parent, QVBoxLayout* around)
        : m_box(new QGroupBox(title, parent))
        , m_grid(new QGridLayout(m_box))
    {
        around->addWidget(m_box);
    }

    QGroupBox* box() const { return m_box; }

    void nextLine()
    {
        m_column = 0;
        ++m_line;
    }

    template <typename Widget>
    Widget* add(Widget* widget, Qt::Alignment alignment = {})
    {
        m_grid->addWidget(widget, m_line, m_column++, alignment);
        return widget;
    }

    QHBoxLayout* addBox()
    {
        auto* box = new QHBoxLayout;
        m_grid->addLayout(box, m_line, m_column++);
        return box;
    }

    QLabel* label(const QString& text) { return add(new QLabel(text, m_box)); }

    template <typename Widget>
    Widget* addLabelled(const QString& text, Widget* widget)
    {
        label(text)->setBuddy(widget);
        return add(widget);
    }

    QLineEdit* edit(const QString& title, const QString& text)
    {
        return addLabelled(title, new QLineEdit(text, m_box));
    }

    QLineEdit* password(const QString& title, const QString& text)
    {
        QLineEdit* const secret = edit(title, text);
        secret->setEchoMode(QLineEdit::Password);
        return secret;
    }

    void check(const QString& title, bool checked)
    {
        add(new QCheckBox(title, m_box))->setChecked(checked);
    }

    void button(const QString& text) { add(new QPushButton(text, m_box)); }

private:
    QGroupBox* m_box;
    QGridLayout* m_grid;
    int m_line = 0;
    int m_column = 0;
};

QString mandatory(const char* title)
{
    return QString::fromUtf8(title)
        + QStringLiteral(" <big><strong style=\"color:red\">*</strong></big>");
}

QDateEdit* dateEdit(const QDate& date, QWidget* parent)
{
    auto* edit = new QDateEdit(parent);
    edit->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    edit->setCalendarPopup(true);
    edit->setDate(date);
    return edit;
}

QComboBox* comboBox(const Choices& choices, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    for (const auto& [text, value] : choices)
        box->addItem(text, value);
    return box;
}

QSpinBox* accountBox(QWidget* parent)
{
    auto* box = new QSpinBox(parent);
    box->setRange(1, 9999);
    box->setCorrectionMode(QAbstractSpinBox::CorrectToNearestValue);
    box->setMaximumWidth(100);
    return box;
}

void addServer(QWidget* parent, QVBoxLayout* around, const SampleValues& values)
{
    Group group(QStringLiteral("Server"), parent, around);
    QGroupBox* const box = group.box();
    box->setStyleSheet(QStringLiteral("QGroupBox { font-weight: bold; }"));
    box->setCheckable(true);
    group.edit(mandatory("Webseite:"), values.mainurl);
    group.nextLine();
    group.password(mandatory("API-Key:"), values.apiKey);
    group.password(mandatory("API-Secret:"), values.apiSecret);
    group.nextLine();
    group.check(QStringLiteral("Datumsfilter von:"), values.dateFilterUse);
    group.add(dateEdit(values.dateFilterAfter, box));
    group.addLabelled(QStringLiteral("Bis:"), dateEdit(values.dateFilterBefore, box));
    group.nextLine();
    group.check(QStringLiteral("ID-Cache aktivieren:"), values.idCacheUse);
    group.button(QStringLiteral("Löschen"));
}

void addGermanized(QWidget* parent, QVBoxLayout* around, const SampleValues& values)
{
    Group group(QStringLiteral("Germanized"), parent, around);
    group.check(QStringLiteral("Verwenden"), values.germanizedUse);
    group.edit(QStringLiteral("PDF-Ordner:"), values.germanizedPdfFolder);
    group.button(QStringLiteral("Ändern..."));
    group.check(QStringLiteral("PDF überschreiben"), values.germanizedOverwritePdf);
}

void addTexts(QWidget* parent, QVBoxLayout* around)
{
    Group group(QStringLiteral("Buchungstexte"), parent, around);
    group.edit(QStringLiteral("Erlös:"), bookingText("buchungs_text_erloes"));
    group.edit(QStringLiteral("Erlös Germanized:"), bookingText("gm_buchungs_text_erloes"));
    group.nextLine();
    group.edit(QStringLiteral("Gebühr:"), bookingText("buchungs_text_gebuehr"));
    group.edit(QStringLiteral("Gebühr Germanized:"), bookingText("gm_buchungs_text_gebuehr"));
    group.nextLine();
    group.edit(QStringLiteral("Versandkosten:"), bookingText("buchungs_text_versand"));
    group.edit(QStringLiteral("Versandkosten Germanized:"),
               bookingText("gm_buchungs_text_versand"));
}

void addOthers(QWidget* parent, QVBoxLayout* around, const SampleValues& values)
{
    Group group(QStringLiteral("Sonstiges"), parent, around);
    QGroupBox* const box = group.box();
    group.check(QStringLiteral("paypal importieren"), values.paypalUse);
    group.check(QStringLiteral("WooCommerce importieren"), values.woocommerceUse);
    group.check(QStringLiteral("Kunden anlegen"), false);
    group.button(QStringLiteral("'Zahlmethode (kurz)' bearbeiten"));
    group.nextLine();
    group.addLabelled(mandatory("Belegdatum:"), comboBox(dateChoices(), box));
    group.addLabelled(mandatory("B2C:"), comboBox(b2cChoices(), box));
    group.nextLine();
    group.addLabelled(QStringLiteral("Kostenstelle 1:"), comboBox(costCentreChoices(), box));
    group.addLabelled(QStringLiteral("Kostenstelle 2:"), comboBox(costCentreChoices(), box));
    group.nextLine();
    group.addLabelled(QStringLiteral("Kontenrahmen:"), comboBox(skrChoices(), box))
        ->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    group.label(QStringLiteral("Typ:"));
    QHBoxLayout* const account = group.addBox();
    account->addWidget(comboBox(roleChoices(), box));
    auto* label = new QLabel(QStringLiteral("Konto:"), box);
    QSpinBox* const number = accountBox(box);
    label->setBuddy(number);
    account->addWidget(label);
    account->addWidget(number, 0, Qt::AlignLeft | Qt::AlignTop);
}

void addLine(QWidget* parent, QVBoxLayout* around)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    around->addWidget(line);
}

void addButtons(QWidget* parent, QVBoxLayout* around)
{
    auto* buttons = new QHBoxLayout;
    for (const char* text : {"Daten vom Server abrufen", "Anhalten", "Hilfe", "Import starten",
                             "Abbrechen und Beenden"})
        buttons->addWidget(new QPushButton(QString::fromUtf8(text), parent));
    around->addLayout(buttons);
}

} // namespace

void buildByHand(QMainWindow& window, const SampleValues& values)
{
    window.setWindowFlags(Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint
                          | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    addServer(content, rows, values);
    addGermanized(content, rows, values);
    addTexts(content, rows);
    addOthers(content, rows, values);
    addLine(content, rows);
    addButtons(content, rows);
    addLine(content, rows);

    auto* central = new QWidget(&window);
    auto* layout = new QVBoxLayout(central);
    auto* area = new QScrollArea(central);
    area->setWidgetResizable(true);
    area->setWidget(content);
    layout->addWidget(area);
    window.setCentralWidget(central);
}

} // namespace bench
