#include "tests/proof/reentrancy_user.h"

#include "app/globals.h"
#include "tests/app/form_page.h"

#include <QApplication>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QSessionManager>
#include <QTextEdit>
#include <QTimer>
#include <QTimerEvent>
#include <QtTest>

#include <algorithm>
#include <array>
#include <numeric>

namespace proof {

namespace {

struct Kind
{
    Step step;
    const char* name;
    int weight;
    const char* button; ///< what stands on it; null for a step that is no click
};

constexpr std::array kinds = {
    Kind {Step::StartButton, "start button", 20, "Daten vom Server abrufen"},
    Kind {Step::StopButton, "stop button", 10, "Anhalten"},
    Kind {Step::OkButton, "hand-over button", 6, "Import starten"},
    Kind {Step::CancelButton, "cancel button", 2, "Abbrechen und Beenden"},
    Kind {Step::ReplacementsButton, "replacements button", 12, "'Zahlmethode (kurz)' bearbeiten"},
    Kind {Step::CacheButton, "cache button", 12, "Löschen"},
    Kind {Step::HelpButton, "help button", 4, "Hilfe"},
    Kind {Step::FolderButton, "folder button", 12, "Ändern..."},
    Kind {Step::GroupHeading, "group heading", 4, nullptr},
    Kind {Step::SecretField, "secret field", 10, nullptr},
    Kind {Step::AddressField, "address field", 2, nullptr},
    Kind {Step::KontoFields, "account fields", 10, nullptr},
    Kind {Step::Escape, "Escape", 5, nullptr},
    Kind {Step::EscapeBehind, "Escape behind a dialog", 5, nullptr},
    Kind {Step::CloseWindow, "window closed", 3, nullptr},
    Kind {Step::SessionEnd, "end of session", 3, nullptr},
    Kind {Step::RunTick, "tick of runTimer", 40, nullptr},
    Kind {Step::WaitTick, "tick of waitTimer", 30, nullptr},
    Kind {Step::Restart, "restart by code", 6, nullptr},
    Kind {Step::HostCancel, "cancel by code", 4, nullptr},
};

const Kind& kindOf(Step step)
{
    return kinds.at(std::size_t(step));
}

/// As the event dispatcher does it.
void fire(QTimer* timer)
{
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
}

void endSession()
{
    // What the desktop sends has no public constructor; nobody looks into it here.
    alignas(QSessionManager) static char bytes[sizeof(QSessionManager)];
    emit qGuiApp->commitDataRequest(reinterpret_cast<QSessionManager&>(bytes));
}

void pressEscape(QWidget* target)
{
    QWidget* focused = target->focusWidget();
    QTest::keyClick(focused ? focused : target, Qt::Key_Escape);
}

} // namespace

const char* nameOf(Step step)
{
    return kindOf(step).name;
}

QStringList namesOfSteps()
{
    QStringList names;
    for (const Kind& kind : kinds)
        names.append(QString::fromLatin1(kind.name));
    return names;
}

bool endsTheProgram(Step step)
{
    switch (step) {
    case Step::OkButton:
    case Step::CancelButton:
    case Step::Escape:
    case Step::EscapeBehind:
    case Step::CloseWindow:
    case Step::SessionEnd:
    case Step::HostCancel:
        return true;
    default:
        return false;
    }
}

Step User::draw()
{
    const int all = std::accumulate(kinds.begin(), kinds.end(), 0,
                                    [](int sum, const Kind& kind) { return sum + kind.weight; });
    int left = m_dice.below(all);
    for (const Kind& kind : kinds) {
        left -= kind.weight;
        if (left < 0)
            return kind.step;
    }
    return Step::RunTick;
}

QPushButton* User::buttonOf(Step step) const
{
    const char* text = kindOf(step).button;
    return text && window() ? FormPage(*window()).button(QString::fromUtf8(text)) : nullptr;
}

QGroupBox* User::heading() const
{
    // One group can be folded, that of the shop's address.
    const auto groups = window()->findChildren<QGroupBox*>();
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [](const QGroupBox* group) { return group->isCheckable(); });
    return found == groups.end() ? nullptr : *found;
}

bool User::can(Step step) const
{
    if (step == Step::SessionEnd)
        return true;
    if (step == Step::Escape)
        return QApplication::activeModalWidget() || (window() && window()->isVisible());
    if (!window())
        return false;
    if (kindOf(step).button) {
        const QPushButton* button = buttonOf(step);
        return button && button->isVisible() && button->isEnabled();
    }
    switch (step) {
    case Step::RunTick:
        return window()->runTimer->isActive();
    case Step::WaitTick:
        return window()->waitTimer->isActive();
    case Step::EscapeBehind:
        return window()->isVisible() && QApplication::activeModalWidget();
    case Step::Restart:
        return true;
    case Step::GroupHeading:
        return heading() && heading()->isVisible();
    case Step::SecretField:
    case Step::AddressField: {
        // A form that is being closed has let go of them.
        const QLineEdit* address = FormPage(*window()).line(QStringLiteral("mainurl"));
        return address && address->isVisible();
    }
    case Step::KontoFields:
        return window()->isVisible() && FormPage(*window()).line(QStringLiteral("mainurl"));
    default:
        return window()->isVisible();
    }
}

void User::perform(Step step)
{
    if (QPushButton* button = buttonOf(step)) {
        button->click();
        return;
    }
    switch (step) {
    case Step::GroupHeading:
        QTest::keyClick(heading(), Qt::Key_Space);
        break;
    case Step::SecretField:
        type(m_dice.chance(50) ? keyNameAPI : keyNameSECRET,
             m_dice.chance(15) ? QString() : QStringLiteral("typed%1").arg(m_dice.below(1000)));
        break;
    case Step::AddressField:
        if (FormPage(*window()).line("mainurl")->text().isEmpty())
            mendAddress();
        else
            type(QStringLiteral("mainurl"), QString());
        break;
    case Step::KontoFields:
        changeKonto();
        break;
    case Step::Escape: {
        QWidget* modal = QApplication::activeModalWidget();
        pressEscape(modal ? modal : window());
        break;
    }
    case Step::EscapeBehind:
        pressEscape(window());
        break;
    case Step::CloseWindow:
        window()->close();
        break;
    case Step::SessionEnd:
        endSession();
        break;
    case Step::RunTick:
        fire(window()->runTimer);
        break;
    case Step::WaitTick:
        fire(window()->waitTimer);
        break;
    case Step::Restart:
        window()->StartTimer();
        break;
    case Step::HostCancel:
        window()->runCancelAction(mod_form_qt::kAfterAction);
        break;
    default:
        break;
    }
}

void User::type(const QString& key, const QString& text) const
{
    FormPage(*window()).type(key, text);
}

void User::mendAddress() const
{
    if (can(Step::AddressField))
        type(QStringLiteral("mainurl"), m_fixture.shop.baseUrl());
    else if (can(Step::GroupHeading))
        QTest::keyClick(heading(), Qt::Key_Space);
}

void User::chooseB2c() const
{
    if (can(Step::KontoFields))
        FormPage(*window()).choose(QStringLiteral("b2c_handling"), QStringLiteral("OSS"));
}

void User::changeKonto()
{
    const FormPage form(*window());
    form.choose(QStringLiteral("skr"),
                m_dice.chance(50) ? QStringLiteral("SKR03") : QStringLiteral("SKR04"));
    QTest::keyClick(form.combo(QStringLiteral("buchungs_typ")), Qt::Key_Down);
    form.typeNumber(QStringLiteral("buchungs_konto"), 1000 + m_dice.below(9000));
}

QString User::answer(QDialog& dialog)
{
    const QPointer<QDialog> guard(&dialog);
    if (auto* edit = dialog.findChild<QTextEdit*>(); edit && m_dice.chance(50))
        QTest::keyClicks(edit, QStringLiteral("x;y~z"));
    QList<QPushButton*> buttons;
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
        if (button->text() != QLatin1String("Hilfe") && button->isVisible())
            buttons.append(button);
    }
    const int choice = m_dice.below(int(buttons.size()) + 2);
    if (choice < buttons.size()) {
        const QString text = buttons.at(choice)->text();
        buttons.at(choice)->click();
        return text;
    }
    const bool escape = choice == buttons.size();
    if (escape)
        pressEscape(&dialog);
    else
        dialog.close();
    // A question of Yes and No has no way out but these.
    if (guard && guard->isVisible() && !buttons.isEmpty()) {
        const QString text = buttons.last()->text();
        buttons.last()->click();
        return text;
    }
    return escape ? QStringLiteral("Escape") : QStringLiteral("closed");
}

} // namespace proof
