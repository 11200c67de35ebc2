#pragma once

#include <QHash>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <functional>

/// Answers every message box of the process as a user would, by a click on a button, and remembers
/// what it said.
class ModalAnswers : public QObject
{
    Q_OBJECT

public:
    struct Seen
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons;
    };

    explicit ModalAnswers(QObject* parent = nullptr);

    /// Boxes of that title are answered with \a button. Others get Ok, or No where there is no Ok.
    void answer(const QString& title, QMessageBox::StandardButton button);
    /// Called once a box is on screen, before it is answered.
    void whenShown(std::function<void(QMessageBox&)> action);
    /// Boxes of that title stay open until release().
    void hold(const QString& title);
    /// Answers the box that is being held.
    void release();
    bool isHolding() const;

    const QList<Seen>& seen() const;
    QStringList titles() const;
    void clear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void onShown(const QPointer<QMessageBox>& box);
    void click(QMessageBox& box);

    QHash<QString, QMessageBox::StandardButton> m_answers;
    std::function<void(QMessageBox&)> m_whenShown;
    QStringList m_held;
    QPointer<QMessageBox> m_holding;
    QList<Seen> m_seen;
};
