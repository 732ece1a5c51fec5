#pragma once

#include "sf/BitLabels.h"
#include "sf/FieldEvaluator.h"
#include "sf/SettingTypes.h"
#include "sf/parser/Token.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>

namespace sf {

class SettingHost;

// A named, typed view on a run of bytes of the setup image, built from one layout entry's
// definition (a token list made by the interpreter). This base class holds what every kind
// shares: the definition and access to its fields, the bytes, the preset, flags,
// dependents and the reference count. The kinds (NumSetting, BoolSetting,
// CheckBoolSetting, ListSetting) give the bytes their meaning.
//
// Construction either succeeds (the kind sets its type) or leaves the setting failed
// (type TypeNone); a failed setting refuses every operation (false, null, invalid value).
// Problems with the definition are reported through problem(QString), which is connected
// to the host's problem signal.
class Setting : public QObject {
    Q_OBJECT
public:
    // Preset letters: the last character of a code name matching this (case-sensitive)
    // names a preset by its distance from 'A'.
    static const QRegularExpression BATT_PRESET_CHARS;

    // Takes ownership of the tokens. Fails (type TypeNone) for an empty code name, no
    // tokens or no host; otherwise derives the preset from the code name's last character,
    // connects problem() to the host and becomes TypeUninit.
    Setting(const QString& codeName, std::unique_ptr<parser::TokenList> tokens, SettingHost* host);
    ~Setting() override;
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    // --- virtual operations ---
    // Base behaviour: RoleRaw gives the first data byte (as an int) when there is data;
    // every other role an invalid value.
    virtual QVariant getData(DataRole role);
    virtual bool setData(const QVariant& value) = 0;
    // Re-evaluates the setting after a setting it depends on changed. Does nothing here.
    virtual bool update(SettingType changedType);
    // Called by the host once every setting of a file is built (references can then be
    // resolved); registers this setting as a dependent of the settings it refers to.
    virtual bool finishSetup();
    // Byte order of the kind's values in the host; false for every kind, so values are
    // always byte-reversed between the image (most significant first) and the host.
    virtual bool isBigEndian() const;

    // --- what a kind adds, asked without knowing the kind ---
    // The help identifier (WSI) of kinds that have one; empty otherwise.
    virtual QString helpIdentifier() const { return QString(); }
    // The labels of the bits of kinds that have labelled bits; null otherwise.
    virtual const QList<BitLabel>* bitLabels() const { return nullptr; }
    // The sub-indices (bits shown as rows of their own) of kinds that have them, and one
    // sub-index's answer; 0 and an invalid value for the others.
    virtual int subIndexCount() { return 0; }
    virtual QVariant subIndexData(int subIndex, DataRole role);
    // Rows a foldable kind takes while unfolded and folded; 0 for kinds that do not fold.
    virtual int unfoldedRows() { return 0; }
    virtual int foldedRows() { return 0; }

    // --- identity and flags ---
    const QString& getCodeName() const { return m_codeName; }
    // The code name without a final digit or preset letter (settings differing only in
    // that character are the same setting for different presets).
    QString getBaseCodeName() const;
    SettingType getType() const { return m_type; }
    void setType(SettingType type) { m_type = type; }
    bool isInitialized() const { return m_type != TypeNone; }
    int getPreset() const;
    bool isMulti() const { return m_multi; }
    bool isExpandable() const { return m_expandable; }
    // Stored only by a kind with sub-indices; anything else clears both multi and
    // expandable.
    void setMulti(bool multi);
    // Stored only by a foldable kind; anything else clears it.
    void setExpandable(bool expandable);
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled) { m_enabled = enabled; }
    bool isEnabledByDefault() const { return m_enabledByDefault; }
    void setEnabledByDefault(bool enabled) { m_enabledByDefault = enabled; }
    const QString& getCategory() const { return m_category; }
    void setCategory(const QString& label) { m_category = label; }
    bool isPresetCounter() const { return m_presetCounter; }
    void setPresetCounter(bool counter) { m_presetCounter = counter; }
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    // --- definition ---
    // The definition tokens (null when not initialised). Kinds rewrite them in place while
    // they are built (purifying, numeric preprocessing).
    parser::TokenList* getTokenList() const;
    SettingHost* getParent() const;
    // Refuses (false) when not initialised or given no table. The table ends with
    // InputEnd and must outlive the setting (the kinds use static tables).
    bool setInputOrder(const SettingInput* order);
    const SettingInput* getInputOrder() const { return m_inputOrder; }

    // --- bytes ---
    // The data bytes (size in bytes of them), null when not initialised or not allocated.
    char* getRawData();
    const char* getRawData() const;
    char* getDataPointer() { return getRawData(); }
    // A copy of the data bytes (empty when there are none).
    QByteArray getBytes() const;
    qint32 getSizeBits() const { return m_sizeBits; }
    void setSizeBits(qint32 bits) { m_sizeBits = bits; }
    qint32 getSizeBytes() const { return m_sizeBytes; }
    void setSizeBytes(qint32 bytes) { m_sizeBytes = bytes; }
    // Allocates size-in-bytes zero bytes when both sizes are at least 1 and returns them;
    // null (nothing allocated) otherwise.
    char* initializeDataPointer();
    // Copies size-in-bytes bytes from bytes into the data. False when not initialised or
    // either pointer is missing.
    bool writeRawData(const char* bytes);
    // Copies size-in-bytes bytes from source to destination, reversed unless the kind is
    // big-endian (destination[i] = source[size - 1 - i]). The two may be the same buffer.
    bool convertEndian(const char* source, char* destination) const;

    // --- dependents and references ---
    // Adds a setting whose definition refers to this one; false for null or a repeat.
    bool addDependent(Setting* dependent);
    // The dependents that still exist (a destroyed dependent drops out by itself).
    QList<Setting*> getDependents() const;
    // How many holders (category cells) refer to this setting; never below 0.
    int addReference();
    int dereference();
    int getReferenceCount() const { return m_referenceCount; }

    // --- fields of the definition ---
    // The tokens of a field with its case blocks and ternaries resolved (conditions
    // evaluated with the current values of the settings they name). False when the
    // setting is not initialised, the kind has no such input, the definition has no such
    // field, or a case block or ternary is malformed (reported through problem()).
    bool getSettingInput(SettingInput input, parser::TokenList* out);
    // Index in the token list of the field's first token (not evaluated), or -1.
    int getSettingInputOffset(SettingInput input) const;
    // Index range [begin, end) of the field's tokens (not evaluated): end is the
    // Separator or End token after the field. False as for getSettingInputOffset or
    // when a closing brace has no opening one.
    bool getSettingInputRange(SettingInput input, int* begin, int* end) const;
    // The first token of the evaluated field, purified (see purifyStringToken, applied
    // only once per token); empty text when the field is missing or empty.
    QString getStringField(SettingInput input);
    // The evaluated field's payloads joined by single spaces; false when the field is
    // missing or empty.
    bool getSettingInputAsString(SettingInput input, QString* out);

    // Rewrites the scale chain in brackets that starts within the field (see the layout
    // language documentation). False when there is nothing to rewrite or the bracketed
    // part is malformed.
    bool preprocessNumericInput(SettingInput input);
    // Purifies every string terminal of the field in place (ternary branches, case
    // entries); reports faults through problem(). True also when the field is missing.
    bool purifyStringTerminals(SettingInput input);
    // Purifies one String or Dependent token in place: quotes delimit text and vanish, a
    // backslash escapes a quote, a tilde or a backslash, and a tilde right after a quote
    // is dropped. False (token unchanged) for any other kind of token or a text whose
    // quotes are not balanced.
    static bool purifyStringToken(parser::Token& token);

    // Every token's payload followed by one space (diagnostics).
    QString debug_getProcessedKXSLine() const;

signals:
    void problem(const QString& message);

protected:
    // Whether the kind has sub-indices, and whether it folds; setMulti and setExpandable
    // store their flags only where these allow.
    virtual bool hasSubIndices() const { return false; }
    virtual bool folds() const { return false; }
    // Emits problem(message), once per distinct message: fields are evaluated whenever
    // they are read, and a malformed one would otherwise repeat its message each time.
    void report(const QString& message);
    // Evaluates an expression: references replaced by current values (Strict), then the
    // calculator. False when a reference does not resolve or the calculation fails.
    bool evaluateExpression(parser::TokenList tokens, double* value);
    // Replaces the references in tokens by Numeric values through the host (Strict).
    bool resolveReferences(parser::TokenList& tokens);
    // Marks the field's tokens as purified, so getStringField does not purify them again.
    void markPurified(SettingInput input);
    // Evaluates the field's conditions (ternaries and case selectors) once and forgets the
    // result: what finishing the setup does so that this setting is registered with the
    // settings they refer to. A field without conditions is not evaluated, since doing so
    // would have no effect.
    void evaluateConditions(SettingInput input);
    // The token range of a field without conditions (no ternary, no case block): exactly
    // the tokens getSettingInput gives, read in place. False when the field is missing or
    // has conditions.
    bool plainFieldRange(SettingInput input, int* begin, int* end) const;

private:
    int inputPosition(SettingInput input) const;
    // The fields of the token list, found once and again after tokens are inserted.
    const FieldEvaluator::Ranges& fields() const;
    // Whether tokens [begin, end) hold a ternary or a case block.
    bool hasConditions(int begin, int end) const;

    QString m_codeName;
    QString m_category;
    std::unique_ptr<parser::TokenList> m_tokens;
    QList<QPointer<Setting>> m_dependents;
    SettingType m_type = TypeNone;
    SettingHost* m_parent = nullptr;
    QByteArray m_data;
    qint32 m_sizeBits = 0;
    qint32 m_sizeBytes = 0;
    qint32 m_preset = 0;
    const SettingInput* m_inputOrder = nullptr;
    bool m_multi = false;
    bool m_expandable = false;
    bool m_enabled = false;
    bool m_enabledByDefault = false;
    bool m_presetCounter = false;
    bool m_hidden = false;
    qint32 m_referenceCount = 0;
    quint32 m_purifiedInputs = 0; // one bit per SettingInput
    QSet<QString> m_reported;
    mutable FieldEvaluator::Ranges m_fields;
    mutable bool m_fieldsKnown = false;
    mutable qsizetype m_fieldsTokenCount = 0;
};

} // namespace sf
