#pragma once

#include <QPlainTextEdit>

namespace gallery {

/// Shows what stands in an INI file, as it changes. A whole map is shown by its entries.
class IniView : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit IniView(const QString& file, QWidget* parent = nullptr);

private:
    void look();

    QString m_file;
};

} // namespace gallery
