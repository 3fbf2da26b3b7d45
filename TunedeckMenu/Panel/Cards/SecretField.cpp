#include "TunedeckMenu/Panel/Cards/SecretField.h"

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

SecretFieldView field(const QString& label, const QString& key, const QString& shown, bool copied) {
    const auto button = copied ? u"Copied"_s : u"Copy"_s;
    return {
        .label = label,
        .shownValue = shown,
        .key = key,
        .button = button,
        .buttonName = label.isEmpty() ? button : button + u' ' + label,
        .buttonSymbol = copied ? u"checkmark"_s : u"doc.on.doc"_s,
    };
}

} // namespace

SecretFieldView privateUrlField(const QString& key, const QString& shown, bool copied) {
    SecretFieldView url = field({}, key, shown, copied);
    url.help = u"Copy this assistant's private URL"_s;
    return url;
}

SecretFieldView shortcutField(const QString& label, const QString& key, const QString& shown, bool copied) {
    SecretFieldView value = field(label, key, shown, copied);
    value.help = u"Copy the %1 for the Shortcut"_s.arg(label);
    return value;
}

} // namespace tunedeck
