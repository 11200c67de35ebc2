#include "form/model/info.h"

namespace mod_form_qt {

QList<INFO> INFO::layoutOkHelpCancel()
{
    return {
        INFO(E_LAYOUT_H),      INFO(E_OK_BUTTON),  INFO(E_HELP_BUTTON),
        INFO(E_CANCEL_BUTTON), INFO(E_LAYOUT_END),
    };
}

QList<INFO> INFO::createOKHelpLinkCancel(const QString& ok, const QString& help,
                                         const QString& link, const QString& cancel)
{
    return {
        INFO(E_LAYOUT_H),
        INFO(E_OK_BUTTON, A_NONE, ok),
        INFO(E_HELP_BUTTON, A_NONE, help),
        INFO(E_OPENURL_BUTTON, A_NONE, link),
        INFO(E_CANCEL_BUTTON, A_NONE, cancel),
        INFO(E_LAYOUT_END),
    };
}

} // namespace mod_form_qt
