#include "tests/support/modal_answers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QTimer>

ModalAnswers::ModalAnswers(QObject* parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

void ModalAnswers::answer(const QString& title, QMessageBox::StandardButton button)
{
    m_answers.insert(title, button);
}

void ModalAnswers::whenShown(std::function<void(QMessageBox&)> action)
{
    m_whenShown = std::move(action);
}

void ModalAnswers::hold(const QString& title)
{
    m_held.append(title);
}

void ModalAnswers::release()
{
    m_held.clear();
    if (m_holding)
        click(*m_holding);
    m_holding = nullptr;
}

bool ModalAnswers::isHolding() const
{
    return !m_holding.isNull();
}

const QList<ModalAnswers::Seen>& ModalAnswers::seen() const
{
    return m_seen;
}

QStringList ModalAnswers::titles() const
{
    QStringList titles;
    for (const Seen& box : m_seen)
        titles.append(box.title);
    return titles;
}

void ModalAnswers::clear()
{
    m_seen.clear();
}

bool ModalAnswers::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        if (auto* box = qobject_cast<QMessageBox*>(watched)) {
            // Once the box runs its own loop.
            QTimer::singleShot(0, this,
                               [this, guarded = QPointer<QMessageBox>(box)] { onShown(guarded); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void ModalAnswers::onShown(const QPointer<QMessageBox>& box)
{
    if (!box)
        return;
    m_seen.append({box->windowTitle(), box->text(), box->icon(), box->standardButtons()});
    if (m_whenShown)
        m_whenShown(*box);
    if (!box)
        return;
    if (m_held.contains(box->windowTitle()))
        m_holding = box;
    else
        click(*box);
}

void ModalAnswers::click(QMessageBox& box)
{
    const bool hasOk = box.standardButtons().testFlag(QMessageBox::Ok);
    const auto fallback = hasOk ? QMessageBox::Ok : QMessageBox::No;
    if (QAbstractButton* button = box.button(m_answers.value(box.windowTitle(), fallback)))
        button->click();
    else
        box.close();
}
