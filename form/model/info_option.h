#pragma once

#include "form/export.h"
#include "form/model/info.h"

#include <QRegularExpression>
#include <QSharedPointer>
#include <QStringList>

#include <utility>

namespace mod_form_qt {

/// The option map of a row. Copies share the map: an option built for one row must not be written
/// for another. Reading never creates an entry.
class MOD_FORM_QT_EXPORT INFO::Option
{
public:
    /// Options by key.
    using Map = QMap<QString, QVariant>;

    // Keys. "Numbered" ones also exist with a row type, an element type or a widget's position in
    // its row behind the key: buildKey(minWidthKey, E_LINEEDIT).

    /// Title of the row, a text.
    inline static const QString titleKey = QStringLiteral("title");
    /// The title without markup, as messages name the row. Set by the engine.
    inline static const QString plainTitleKey = QStringLiteral("plaintitle");
    /// Main row: path of the file that the values are saved in.
    inline static const QString iniFileNameKey = QStringLiteral("inifileName");
    /// Main row: the group in that file.
    inline static const QString iniGroupNameKey = QStringLiteral("inigroupname");
    /// Main row, a bool: an INI key for each value, in place of one for the whole map.
    inline static const QString iniSeparateKeysKey = QStringLiteral("iniseparatekeys");
    /// Main row: INI key of the whole map; `iniVariantMapKey` if missing.
    inline static const QString iniSumMapNameKey = QStringLiteral("inisummapname");
    /// Main row, a bool: several named configurations.
    inline static const QString iniUseMultiConfKey = QStringLiteral("iniusemulticonf");
    /// Main row, a bool: false asks the user before values are saved.
    inline static const QString iniAutoSaveKey = QStringLiteral("iniautosave");
    /// Folder that a file dialog starts in.
    inline static const QString currentDirKey = QStringLiteral("currentdir");
    /// Filter of a file dialog, as QFileDialog takes it.
    inline static const QString fileFilterKey = QStringLiteral("filefilter");
    /// QLocale of the row; that of the main row if missing.
    inline static const QString localeKey = QStringLiteral("locale");
    /// Alignment by the position in the row, an int; numbered.
    inline static const QString indexAlignKey = QStringLiteral("indexalign");
    /// Alignment by the element type, an int; numbered.
    inline static const QString typeAlignKey = QStringLiteral("typealign");
    /// Main row: alignment of all widgets, an int.
    inline static const QString defaultAlignKey = QStringLiteral("defaultalign");
    /// Main row: alignments by element type, a `QMap<int, Qt::Alignment>`.
    inline static const QString defaultTypeAlignKey = QStringLiteral("defaulttypealign");
    /// Stretch factor; numbered.
    inline static const QString stretchKey = QStringLiteral("stretch");
    /// Least width in pixels; numbered.
    inline static const QString minWidthKey = QStringLiteral("minwidth");
    /// Largest width in pixels; numbered.
    inline static const QString maxWidthKey = QStringLiteral("maxwidth");
    /// Least height in pixels; numbered.
    inline static const QString minHeightKey = QStringLiteral("minheight");
    /// Largest height in pixels; numbered.
    inline static const QString maxHeightKey = QStringLiteral("maxheight");
    /// Width in pixels; numbered.
    inline static const QString fixedWidthKey = QStringLiteral("fixedwidth");
    /// Height in pixels; numbered.
    inline static const QString fixedHeightKey = QStringLiteral("fixedheight");
    /// Horizontal QSizePolicy::Policy, an int; numbered.
    inline static const QString sizePolicyHKey = QStringLiteral("sizepolicyh");
    /// Vertical QSizePolicy::Policy, an int; numbered.
    inline static const QString sizePolicyVKey = QStringLiteral("sizepolicyv");
    /// A bool: what the path names has to exist.
    inline static const QString fileMustExistKey = QStringLiteral("file_must_exist");
    /// Least number or date; for a text its least length, unless `minCharsKey` says it.
    inline static const QString minKey = QStringLiteral("min");
    /// Largest number or date; for a text its largest length, unless `maxCharsKey` says it.
    inline static const QString maxKey = QStringLiteral("max");
    /// Least length in characters.
    inline static const QString minCharsKey = QStringLiteral("minchars");
    /// Largest length in characters.
    inline static const QString maxCharsKey = QStringLiteral("maxchars");
    /// A bool: a value is required.
    inline static const QString mandatoryKey = QStringLiteral("required");
    /// Regular expression that the text has to match.
    inline static const QString regexPatternKey = QStringLiteral("regex_pattern");
    /// The pattern's QRegularExpression::PatternOptions, an int.
    inline static const QString regexPatternOptionsKey = QStringLiteral("regex_pattern_options");
    /// A bool: the pattern is a wildcard.
    inline static const QString regexPatternWildcardKey = QStringLiteral("regex_pattern_wildcard");
    /// Meta-type id of a number whose value does not say it.
    inline static const QString metaTypeKey = QStringLiteral("metatype");
    /// Decimals of a number; `defaultNumberPrecision` if missing.
    inline static const QString precisionKey = QStringLiteral("precision");
    /// A bool: separators between thousands; `useNumberGrouping` if missing.
    inline static const QString groupSepKey = QStringLiteral("groupsep");
    /// A bool: the number may be negative.
    inline static const QString signedDataTypeKey = QStringLiteral("signed_datatype");
    /// A bool: a spin box in place of a line edit; `useNumberSpinBox` if missing.
    inline static const QString spinBoxKey = QStringLiteral("spinbox");
    /// Step of a spin box.
    inline static const QString spinBoxSingleStepKey = QStringLiteral("spinbox_singlestep");
    /// A bool: draws a number to its bounds; `useAutoCorrectMinMax` if missing.
    inline static const QString autoCorrectMinMaxKey = QStringLiteral("autocorrect_minmax");
    /// Text behind the number in a spin box.
    inline static const QString suffixKey = QStringLiteral("suffix");
    /// Text before the number in a spin box.
    inline static const QString prefixKey = QStringLiteral("prefix");
    /// Milliseconds and key of a timer, a QVariantList, or a list of such.
    inline static const QString timerKey = QStringLiteral("timer");

    // What holds where an option is missing.

    /// Decimals of a number.
    inline static const int defaultNumberPrecision = 2;
    /// Numbers show separators between thousands.
    inline static const bool useNumberGrouping = true;
    /// Numbers stand in line edits.
    inline static const bool useNumberSpinBox = false;
    /// A number beyond its bounds is not corrected.
    inline static const bool useAutoCorrectMinMax = false;
    /// How a pattern is read.
    inline static const QRegularExpression::PatternOptions defaultRegexPatternOptions =
        QRegularExpression().patternOptions();
    /// How much of a text a pattern has to match.
    inline static const QRegularExpression::MatchType defaultRegexMatchType =
        QRegularExpression::NormalMatch;
    /// How a pattern is matched.
    inline static const QRegularExpression::MatchOptions defaultRegexMatchOptions =
        QRegularExpression::NoMatchOption;
    /// Whether a wildcard tells upper from lower case.
    inline static const Qt::CaseSensitivity defaultRegexWildcardCaseSensitivity =
        Qt::CaseInsensitive;
    /// How a wildcard becomes a pattern.
    inline static const QRegularExpression::WildcardConversionOptions
        defaultRegexWildcardConversionOptions = QRegularExpression::DefaultWildcardConversion;

    // Separators of the title syntax.

    /// Of "{{key}{value}}", which sets an option.
    inline static const QStringList varSeps = {QStringLiteral("{{"), QStringLiteral("}{"),
                                               QStringLiteral("}}")};
    /// Of "[name]", a code in the text of a menu entry.
    inline static const QStringList arrSeps = {QStringLiteral("["), QStringLiteral("]")};
    /// Between the parts of a path.
    inline static const QString pathSep = QStringLiteral("|");
    /// Between the label and the texts of the row's further widgets.
    inline static const QString titleSeparator = QStringLiteral(";");

    /// No options.
    Option() = default;
    /// A copy of the options: later changes to the map given are not seen.
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
    /// Takes an option away; a missing one has no effect.
    void remove(const QString& key);

    /// \return  the value, or `fallback` if there is none under the key
    QVariant value(const QString& key, const QVariant& fallback = QVariant()) const;
    /// All options.
    const Map& map() const;
    /// \return  true if there is not one option
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

    /// \return  what stands under `titleKey`
    QString title() const;
    /// \return  what stands under `prefixKey`
    QString prefix() const;
    /// \return  what stands under `suffixKey`
    QString suffix() const;
    /// \return  what stands under `regexPatternKey`
    QString regexPattern() const;
    /// \return  what stands under `iniGroupNameKey`
    QString iniGroupName() const;
    /// \return  what stands under `iniSumMapNameKey`
    QString iniSumMapName() const;
    /// \return  what stands under `currentDirKey`
    QString currentDir() const;
    /// \return  what stands under `fileFilterKey`
    QString fileFilter() const;
    /// \return  what stands under `iniFileNameKey`
    QString iniFileName() const;

    // Invalid where an option is missing.

    /// \return  what stands under `metaTypeKey`
    QVariant metaType() const;
    /// \return  what stands under `minKey`
    QVariant min() const;
    /// \return  what stands under `maxKey`
    QVariant max() const;
    /// \return  what stands under `signedDataTypeKey`
    QVariant isSignedDataType() const;
    /// \return  what stands under `spinBoxSingleStepKey`
    QVariant spinBoxSingleStep() const;
    /// \return  the pixels under `minWidthKey` with `n`
    QVariant minWidth(int n) const;
    /// \return  the policy under `sizePolicyHKey` with `n`, an int
    QVariant sizePolicyH(int n) const;
    /// \return  the policy under `sizePolicyVKey` with `n`, an int
    QVariant sizePolicyV(int n) const;

    /// \return  what stands under `iniUseMultiConfKey`, false if missing
    bool iniUseMultiConf() const;
    /// \return  what stands under `iniSeparateKeysKey`, false if missing
    bool iniSeparateKeys() const;
    /// \return  what stands under `spinBoxKey`, `useNumberSpinBox` if missing
    bool useSpinBox() const;

    /// \return  whether there is an alignment for the element type, and which
    std::pair<bool, Qt::Alignment> alignByType(int n) const;
    /// \return  whether there is an alignment for the widget's position, and which
    std::pair<bool, Qt::Alignment> alignByIndex(int n) const;

    /// Writes `sizePolicyHKey` with `n`.
    void setSizePolicyH(int n, QSizePolicy::Policy policy);
    /// Writes `sizePolicyVKey` with `n`.
    void setSizePolicyV(int n, QSizePolicy::Policy policy);
    /// Writes `typeAlignKey` with `n`.
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
