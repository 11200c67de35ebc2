#include "form/menus/tree_menu.h"

#include "form/model/info_option.h"

#include <QFileInfo>
#include <QFont>
#include <QIcon>
#include <QKeySequence>
#include <QWidgetAction>

#include <array>

namespace mod_form_qt {

namespace {

using Attributes = QMap<QString, QVariant>;
using Option = INFO::Option;

/// The object that an attribute is for; the other one is null.
struct Target
{
    QMenu* menu;
    QAction* action;

    /// \return  what is shown, hidden and enabled. To show the menu itself would open it
    QAction* entry() const { return menu ? menu->menuAction() : action; }
};

void applyCheckable(const Target& target, const QVariant&)
{
    if (target.action)
        target.action->setCheckable(true);
}

void applyChecked(const Target& target, const QVariant& value)
{
    if (target.action)
        target.action->setChecked(value.toBool());
}

void applyGroup(const Target& target, const QVariant& value)
{
    if (target.action)
        target.action->setProperty(INFO::menuGroupNoKey.toUtf8().constData(), value.toInt());
}

void applySeparator(const Target& target, const QVariant&)
{
    if (target.action)
        target.action->setSeparator(true);
}

void applyId(const Target& target, const QVariant& value)
{
    QObject* object = target.menu;
    if (object == nullptr)
        object = target.action;
    object->setProperty(INFO::menuIDKey.toUtf8().constData(), value.toString());
}

void applyToolTip(const Target& target, const QVariant& value)
{
    if (target.menu)
        target.menu->setToolTip(value.toString());
    else
        target.action->setToolTip(value.toString());
}

void applyStatusTip(const Target& target, const QVariant& value)
{
    if (target.menu)
        target.menu->setStatusTip(value.toString());
    else
        target.action->setStatusTip(value.toString());
}

void applyStyleSheet(const Target& target, const QVariant& value)
{
    if (target.menu)
        target.menu->setStyleSheet(value.toString());
}

void applyIconText(const Target& target, const QVariant& value)
{
    if (target.action)
        target.action->setIconText(value.toString());
}

void applyIcon(const Target& target, const QVariant& value)
{
    const QString path = value.toString();
    if (QFileInfo::exists(path))
        target.entry()->setIcon(QIcon(path));
}

void applyHexIcon(const Target& target, const QVariant& value)
{
    const QString path = QString::fromUtf8(QByteArray::fromHex(value.toString().toLatin1()));
    const QIcon icon(path);
    // An icon of a file that does not exist is empty, but does not say so.
    if (!icon.isNull() && QFileInfo::exists(path))
        target.entry()->setIcon(icon);
}

void applyFont(const Target& target, const QVariant& value)
{
    QFont font;
    if (!font.fromString(value.toString()))
        return; // the toolkit has logged what is wrong with it
    if (target.menu)
        target.menu->setFont(font);
    else
        target.action->setFont(font);
}

void applyShortcut(const Target& target, const QVariant& value)
{
    const QKeySequence keys = QKeySequence::fromString(value.toString());
    if (target.action && !keys.isEmpty())
        target.action->setShortcut(keys);
}

void applyShortcutContext(const Target& target, const QVariant& value)
{
    bool isNumber = false;
    const int context = value.toInt(&isNumber);
    const bool known =
        isNumber && context >= Qt::WidgetShortcut && context <= Qt::WidgetWithChildrenShortcut;
    if (target.action && known)
        target.action->setShortcutContext(Qt::ShortcutContext(context));
}

void applyVisible(const Target& target, const QVariant& value)
{
    target.entry()->setVisible(value.toBool());
}

void applyEnabled(const Target& target, const QVariant& value)
{
    target.entry()->setEnabled(value.toBool());
}

struct Attribute
{
    const char* name;
    void (*apply)(const Target& target, const QVariant& value);
};

// In this order: only what is checkable can be checked.
constexpr std::array attributeTable = {
    Attribute {"checkable", applyCheckable},
    Attribute {"checked", applyChecked},
    Attribute {"group", applyGroup},
    Attribute {"separator", applySeparator},
    Attribute {"id", applyId},
    Attribute {"tooltip", applyToolTip},
    Attribute {"statustip", applyStatusTip},
    Attribute {"stylesheet", applyStyleSheet},
    Attribute {"icontext", applyIconText},
    Attribute {"icon", applyIcon},
    Attribute {"icon-hex", applyHexIcon},
    Attribute {"font", applyFont},
    Attribute {"keysequence", applyShortcut},
    Attribute {"shortcutContext", applyShortcutContext},
    Attribute {"visible", applyVisible},
    Attribute {"enabled", applyEnabled},
};

constexpr QLatin1String lastKey("last");
constexpr QLatin1String separatorKey("separator");

/// Takes the codes in brackets out of a text.
QStringList takeCodes(QString& text)
{
    QStringList codes;
    QString seen;
    // One bracket at a time: all at once they would come sorted, and equal ones only once.
    for (qsizetype end = text.indexOf(u']'); end >= 0; end = text.indexOf(u']')) {
        seen += text.left(end + 1);
        text.remove(0, end + 1);
        Option::Map code;
        Option::extractVars(Option::arrSeps, seen, code);
        codes += code.keys();
    }
    text.prepend(seen);
    return codes;
}

/// \return  the number in a field of a code, `missing` if the code is shorter. A field that is no
///          number, such as an empty one, is 0
int fieldNumber(const QStringList& fields, qsizetype index, int missing)
{
    return index < fields.size() ? fields.at(index).trimmed().toInt() : missing;
}

void readCode(const QString& code, Attributes& attributes)
{
    QStringList fields {code};
    if (code.indexOf(u';') > 0)
        fields = code.split(u';');
    const QString letter = fields.first().trimmed().toLower();
    if (letter == QLatin1String("s")) {
        attributes.insert(separatorKey, true);
    } else if (letter == QLatin1String("w")) {
        attributes.insert(QStringLiteral("widget"), true);
    } else if (letter == QLatin1String("x")) {
        attributes.insert(QStringLiteral("checkable"), true);
        attributes.insert(QStringLiteral("checked"), fieldNumber(fields, 1, 0) != 0);
        attributes.insert(QStringLiteral("group"), fieldNumber(fields, 2, -1));
    }
}

} // namespace

TREE_MENU::TREE_MENU(const QString& title, bool parseText, bool parseActions)
    : m_root(new QMenu(title))
    , m_current(m_root)
    , m_parseText(parseText)
    , m_parseActions(parseActions)
{
}

void TREE_MENU::parse(QString& text, QMap<QString, QVariant>& attributes)
{
    if (text.endsWith(u'\n')) {
        attributes.insert(lastKey, true);
        text.chop(1);
    }
    Option::extractVars(Option::varSeps, text, attributes);
    const QStringList codes = takeCodes(text);
    for (const QString& code : codes)
        readCode(code, attributes);
}

void TREE_MENU::setAttr(const QMap<QString, QVariant>& attributes, QMenu* menu, QAction* action)
{
    for (const Attribute& attribute : attributeTable) {
        const auto found = attributes.constFind(QLatin1String(attribute.name));
        if (found == attributes.constEnd())
            continue;
        if (menu)
            attribute.apply({menu, nullptr}, *found);
        if (action)
            attribute.apply({nullptr, action}, *found);
    }
}

QAction* TREE_MENU::newAction(const QString& text, const QMap<QString, QVariant>& attributes) const
{
    auto* action = new QAction(text, m_current);
    setAttr(attributes, nullptr, action);
    m_current->addAction(action);
    return action;
}

TREE_MENU& TREE_MENU::operator<<(const QString& text)
{
    if (text == endl) {
        m_current = m_root;
        return *this;
    }
    if (m_current == nullptr)
        return *this;
    QString title = text;
    QMap<QString, QVariant> attributes;
    if (m_parseText)
        parse(title, attributes);
    if (attributes.contains(lastKey) || attributes.contains(separatorKey)) {
        newAction(title, attributes);
        return *this;
    }
    auto* submenu = new QMenu(title, m_current);
    setAttr(attributes, submenu, nullptr);
    setAttr(attributes, nullptr, m_current->addMenu(submenu));
    m_current = submenu;
    return *this;
}

TREE_MENU& TREE_MENU::operator>>(const QString& text)
{
    if (text == endl) {
        m_current = m_root;
        return *this;
    }
    if (m_current == nullptr)
        return *this;
    QString title = text;
    QMap<QString, QVariant> attributes;
    if (m_parseText)
        parse(title, attributes);
    newAction(title, attributes);
    if (attributes.contains(lastKey))
        m_current = m_root;
    return *this;
}

TREE_MENU& TREE_MENU::operator<<(QAction* action)
{
    if (action == nullptr || m_current == nullptr)
        return *this;
    if (m_parseActions) {
        QString text = action->text();
        QMap<QString, QVariant> attributes;
        parse(text, attributes);
        action->setText(text);
        setAttr(attributes, nullptr, action);
    }
    m_current->addAction(action);
    return *this;
}

TREE_MENU& TREE_MENU::operator<<(QMenu* menu)
{
    if (menu && m_current)
        m_current->addMenu(menu);
    return *this;
}

TREE_MENU& TREE_MENU::operator<<(QWidget* widget)
{
    if (widget == nullptr || m_current == nullptr)
        return *this;
    auto* action = new QWidgetAction(m_current);
    action->setDefaultWidget(widget);
    m_current->addAction(action);
    return *this;
}

} // namespace mod_form_qt
