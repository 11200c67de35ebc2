#pragma once

#include "app/mainwindow.h"
#include "tests/support/modal_answers.h"
#include "tests/support/start_folder.h"

#include "tools/demo_shop/shop_server.h"

#include <QJsonArray>
#include <QJsonObject>

#include <functional>
#include <memory>

class QPushButton;

/// A window of the real program, a shop on loopback behind it, and a folder before it.
class RunFixture
{
public:
    explicit RunFixture(const StartFolder& folder);
    ~RunFixture();

    /// Puts every process-wide value and every file of the folder back to a first start, then makes
    /// a window whose saved options are \a options. "mainurl" is the shop's unless given. The
    /// host's file holds \a hostLines, or those of the folder.
    MainWindow& start(const QMap<QString, QVariant>& options = {},
                      const QStringList& hostLines = {});
    /// Fills the two fields of the secrets, without which nothing can be handed over. From then on
    /// what saves the options wants to put them into the secret store.
    void enterCredentials() const;
    /// Destroys the window and makes another one in the same folder, as a next start would.
    MainWindow& restart();

    /// Runs passes by hand, without the pace of a page a second, until the run has ended; the
    /// end question is answered as \a answers says. Bounded; fails the test if it does not end.
    void runToEnd();
    /// The same for a run that has been reset already.
    void tickToEnd();
    /// Starts the run's timer with a pace that no test lives to see, for passes made by hand.
    void keepTicksAway();
    /// Resets the run and makes one pass by hand.
    void runOnePass();

    /// Answers: path (without query) -> JSON. Orders and taxes are cut into pages of 100.
    void serveOrders(const QJsonArray& orders);
    void serveTaxes(const QJsonArray& taxes);
    void serve(const QString& path, const QByteArray& body, int status = 200);
    /// Calls \a action once, when the next request arrives whose target (path and query as on the
    /// wire) contains \a part. That request is answered only after the action has returned.
    void during(const QByteArray& part, std::function<void()> action);

    /// Paths (with query, as on the wire) of the requests seen.
    QStringList targets() const;
    /// Paths without query.
    QStringList paths() const;
    /// How many of the requests seen have a target that contains \a part.
    qsizetype countOf(const QString& part) const;
    /// True if the status label shows \a text the way every status is shown.
    bool showsStatus(const QString& text) const;
    /// The window's two buttons, found by what stands on them; null without a window.
    QPushButton* startButton() const;
    QPushButton* okButton() const;

    const StartFolder& folder;
    ModalAnswers answers;
    demo_shop::ShopServer shop;
    std::unique_ptr<MainWindow> window;

private:
    struct Action
    {
        QByteArray part;
        std::function<void()> action;
    };

    demo_shop::ShopAnswer answerTo(const demo_shop::ShopRequest& request);
    void takeAction(const demo_shop::ShopRequest& request);
    QPushButton* button(const QString& text) const;
    void makeWindow();

    QJsonArray m_orders;
    QJsonArray m_taxes;
    QMap<QString, std::pair<int, QByteArray>> m_answers;
    QList<Action> m_actions;
};
