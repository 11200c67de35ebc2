#pragma once

#include "form/model/info.h"

#include <QRegularExpression>
#include <QSharedPointer>
#include <QStringList>

#include <utility>

namespace mod_form_qt {

/// The option map of a row. Copies share the map: an option built for one row must not be written
/// for another. Reading never creates an entry.
class INFO::Option
{
public:
    using Map = QMap<QString, QVariant>;

    // Keys. "Numbered" ones also exist with a row type, an element type or a widget's position in
    // its row behind the key: buildKey(minWidthKey, E_LINEEDIT).

    inline static const QString titleKey = QStringLiteral("title");
    inline static const QString plainTitleKey = QStringLiteral("plaintitle");
    inline static const QString iniFileNameKey = QStringLiteral("inifileName");
    inline static const QString iniGroupNameKey = QStringLiteral("inigroupname");
    inline static const QString iniSeparateKeysKey = QStringLiteral("iniseparatekeys");
    inline static const QString iniSumMapNameKey = QStringLiteral("inisummapname");
    inline static const QString iniUseMultiConfKey = QStringLiteral("iniusemulticonf");
    inline static const QString iniAutoSaveKey = QStringLiteral("iniautosave");
    inline static const QString currentDirKey = QStringLiteral("currentdir");
    inline static const QString fileFilterKey = QStringLiteral("filefilter");
    inline static const QString localeKey = QStringLiteral("locale");
    inline static const QString indexAlignKey = QStringLiteral("indexalign"); ///< numbered
    inline static const QString typeAlignKey = QStringLiteral("typealign"); ///< numbered
    inline static const QString defaultAlignKey = QStringLiteral("defaultalign");
    inline static const QString defaultTypeAlignKey = QStringLiteral("defaulttypealign");
    inline static const QString stretchKey = QStringLiteral("stretch"); ///< numbered
    inline static const QString minWidthKey = QStringLiteral("minwidth"); ///< numbered, pixels
    inline static const QString maxWidthKey = QStringLiteral("maxwidth"); ///< numbered, pixels
    inline static const QString minHeightKey = QStringLiteral("minheight"); ///< numbered, pixels
    inline static const QString maxHeightKey = QStringLiteral("maxheight"); ///< numbered, pixels
    inline static const QString fixedWidthKey = QStringLiteral("fixedwidth"); ///< numbered, pixels
    inline static const QString fixedHeightKey =
        QStringLiteral("fixedheight"); ///< numbered, pixels
    inline static const QString sizePolicyHKey = QStringLiteral("sizepolicyh"); ///< numbered
    inline static const QString sizePolicyVKey = QStringLiteral("sizepolicyv"); ///< numbered
    inline static const QString fileMustExistKey = QStringLiteral("file_must_exist");
    inline static const QString minKey = QStringLiteral("min");
    inline static const QString maxKey = QStringLiteral("max");
    inline static const QString minCharsKey = QStringLiteral("minchars");
    inline static const QString maxCharsKey = QStringLiteral("maxchars");
    inline static const QString mandatoryKey = QStringLiteral("required");
    inline static const QString regexPatternKey = QStringLiteral("regex_pattern");
    inline static const QString regexPatternOptionsKey = QStringLiteral("regex_pattern_options");
    inline static const QString regexPatternWildcardKey = QStringLiteral("regex_pattern_wildcard");
    inline static const QString metaTypeKey = QStringLiteral("metatype");
    inline static const QString precisionKey = QStringLiteral("precision");
    inline static const QString groupSepKey = QStringLiteral("groupsep");
    inline static const QString signedDataTypeKey = QStringLiteral("signed_datatype");
    inline static const QString spinBoxKey = QStringLiteral("spinbox");
    inline static const QString spinBoxSingleStepKey = QStringLiteral("spinbox_singlestep");
    inline static const QString autoCorrectMinMaxKey = QStringLiteral("autocorrect_minmax");
    inline static const QString suffixKey = QStringLiteral("suffix");
    inline static const QString prefixKey = QStringLiteral("prefix");
    inline static const QString timerKey = QStringLiteral("timer");

    // What holds where an option is missing.

    inline static const int defaultNumberPrecision = 2;
    inline static const bool useNumberGrouping = true;
    inline static const bool useNumberSpinBox = false;
    inline static const bool useAutoCorrectMinMax = false;
    inline static const QRegularExpression::PatternOptions defaultRegexPatternOptions =
        QRegularExpression().patternOptions();
    inline static const QRegularExpression::MatchType defaultRegexMatchType =
        QRegularExpression::NormalMatch;
    inline static const QRegularExpression::MatchOptions defaultRegexMatchOptions =
        QRegularExpression::NoMatchOption;
    inline static const Qt::CaseSensitivity defaultRegexWildcardCaseSensitivity =
        Qt::CaseInsensitive;
    inline static const QRegularExpression::WildcardConversionOptions
        defaultRegexWildcardConversionOptions = QRegularExpression::DefaultWildcardConversion;

    // Separators of the title syntax.

    inline static const QStringList varSeps = {QStringLiteral("{{"), QStringLiteral("}{"),
                                               QStringLiteral("}}")};
    inline static const QStringList arrSeps = {QStringLiteral("["), QStringLiteral("]")};
    inline static const QString pathSep = QStringLiteral("|");
    inline static const QString titleSeparator = QStringLiteral(";");

    Option() = default;
    Option(const Map& map);
    /// \param param  a map; anything else gives an empty option
    Option(const QVariant& param);
    /// \param title  stored under `titleKey`
    Option(const QString& title);

    /// \return  the option of a row: its param if that is a map that holds something, otherwise
    ///          the param's text as the title; a param without either has no title at all
    static Option ofParam(const QVariant& param);

    /// Writes a value.
    /// \return  a copy, which shares the map
    Option setValue(const QString& key, const QVariant& value);
    void remove(const QString& key);

    /// \return  the value, or `fallback` if there is none under the key
    QVariant value(const QString& key, const QVariant& fallback = QVariant()) const;
    const Map& map() const;
    bool isEmpty() const;

    /// \return  `key` with `n` in decimal behind it
    static QString buildKey(const QString& key, int n);
    /// \param numbered  false: looks for `key`, true: for the key with `n` behind it
    bool containsKey(const QString& key, int n = 0, bool numbered = false) const;
    /// \return  false if `key` certainly has no numbered form here; cheaper than to try each one
    bool mayHaveNumbered(const QString& key) const;
    /// \return  the value under the key with `n` behind it, invalid if there is none
    QVariant numbered(const QString& key, int n) const;

    // Empty texts where an option is missing.

    QString title() const;
    QString prefix() const;
    QString suffix() const;
    QString regexPattern() const;
    QString iniGroupName() const;
    QString iniSumMapName() const;
    QString currentDir() const;
    QString fileFilter() const;
    QString iniFileName() const;

    // Invalid where an option is missing.

    QVariant metaType() const;
    QVariant min() const;
    QVariant max() const;
    QVariant isSignedDataType() const;
    QVariant spinBoxSingleStep() const;
    QVariant minWidth(int n) const;
    QVariant sizePolicyH(int n) const;
    QVariant sizePolicyV(int n) const;

    bool iniUseMultiConf() const;
    bool iniSeparateKeys() const;
    bool useSpinBox() const;

    /// \return  whether there is an alignment for the element type, and which
    std::pair<bool, Qt::Alignment> alignByType(int n) const;
    /// \return  whether there is an alignment for the widget's position, and which
    std::pair<bool, Qt::Alignment> alignByIndex(int n) const;

    void setSizePolicyH(int n, QSizePolicy::Policy policy);
    void setSizePolicyV(int n, QSizePolicy::Policy policy);
    void setAlignByType(int n, Qt::Alignment alignment);

    /// \return  true if the map holds one of the keys that make a field worth checking; the length
    ///          in characters and the existence of a file are not among them
    bool hasValidationRules() const;

    /// Takes options out of a title.
    /// \param separators  `varSeps` for "{{key}{value}}", `arrSeps` for "[name]"
    /// \param title       in/out: the constructs are removed
    /// \param map         out: gets the values as texts; an empty key stores nothing
    /// \return            true if something was taken or nothing is left of the title
    static bool extractVars(const QStringList& separators, QString& title, Map& map);

    /// A folder for files of the program.
    /// \param useConfigDir  false: the program's own folder, if files can be made in it
    /// \return              a path that ends in "/"; the folder of the configuration is created
    static QString getConfigPath(bool useConfigDir);

private:
    QString text(const QString& key) const;
    std::pair<bool, Qt::Alignment> alignment(const QString& key, int n) const;

    QSharedPointer<Map> m_map;
};

} // namespace mod_form_qt
