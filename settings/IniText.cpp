#include "IniText.h"

#include <QFileDevice>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

namespace {

const QString noSection = QStringLiteral("General");
/// Makes a list of the one part behind it. QSettings reads an empty pair of quotes as nothing, and
/// so gets the part alone, which is also how it writes a list of one text.
const QByteArray listMark("\"\"");
const QString invalidText = QStringLiteral("@Invalid()");
/// Keeps a hostile file from filling the stack, and from costing more than its length.
constexpr int deepestList = 16;

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isKeyLetter(ushort c)
{
    return c < 0x80 && (QChar(c).isLetterOrNumber() || c == '_' || c == '-' || c == '.');
}

QByteArray escapedKey(const QString &key)
{
    QByteArray text;
    for (const QChar letter : key) {
        const ushort c = letter.unicode();
        if (isKeyLetter(c))
            text += static_cast<char>(c);
        else if (c == '/')
            text += '\\';
        else if (c <= 0xff)
            text += '%' + QByteArray::number(c + 0x100, 16).right(2).toUpper();
        else
            text += "%U" + QByteArray::number(c + 0x10000, 16).right(4).toUpper();
    }
    return text;
}

QString keyFrom(const QByteArray &text)
{
    QString key;
    for (int i = 0; i < text.size(); ++i) {
        const int digits = text[i] != '%' ? 0 : text.mid(i + 1, 1) == "U" ? 4 : 2;
        const int first = i + (digits == 4 ? 2 : 1);
        bool isNumber = false;
        const ushort code = text.mid(first, digits).toUShort(&isNumber, 16);
        const auto plain = static_cast<uchar>(text[i]);
        key += isNumber ? QChar(code) : plain == '\\' ? QChar('/') : QChar(plain);
        if (isNumber)
            i = first + digits - 1;
    }
    return key;
}

QByteArray escapedText(const QString &text)
{
    QByteArray escaped;
    bool joins = false;
    for (const QChar letter : text) {
        const ushort c = letter.unicode();
        const bool isPlain = c >= 0x20 && c < 0x7f && c != '"' && c != '\\';
        // A digit right behind a code would be read as its part.
        joins = !isPlain || (joins && isHexDigit(static_cast<char>(c)));
        if (joins)
            escaped += "\\x" + QByteArray::number(c, 16);
        else
            escaped += static_cast<char>(c);
    }
    const bool needsQuotes = text.isEmpty() || text.startsWith(' ') || text.endsWith(' ')
        || text.contains(';') || text.contains(',') || text.contains('=');
    return needsQuotes ? '"' + escaped + '"' : escaped;
}

/// Appends what the escape before \a first stands for.
/// \return the index of its last character
int unescape(const QByteArray &text, int first, QString &part)
{
    static const QByteArray letters("abfnrtv\"\\");
    static const char codes[] = "\a\b\f\n\r\t\v\"\\";
    const char c = first < text.size() ? text[first] : '\0';
    const auto known = letters.indexOf(c);
    if (known >= 0) {
        part += QLatin1Char(codes[known]);
        return first;
    }
    const bool isHex = c == 'x';
    int end = isHex ? first + 1 : first;
    ushort code = 0;
    for (; end < text.size()
         && (isHex ? isHexDigit(text[end]) : text[end] >= '0' && text[end] <= '7');
         ++end)
        code = static_cast<ushort>(
            code * (isHex ? 16 : 8) + QByteArray(1, text[end]).toUShort(nullptr, 16));
    if (end > first + (isHex ? 1 : 0))
        part += QChar(code);
    return qMax(end - 1, first);
}

/// The parts between commas, without the blanks around them.
QStringList partsOf(const QByteArray &text)
{
    QStringList parts;
    QString part;
    int kept = 0;
    bool isQuoted = false;
    const auto finish = [&] {
        parts += part.left(kept);
        part.clear();
        kept = 0;
    };
    for (int i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isBlank = !isQuoted && (c == ' ' || c == '\t' || c == '\r');
        if (c == ',' && !isQuoted) {
            finish();
            continue;
        }
        if (c == '"')
            isQuoted = !isQuoted;
        else if (c == '\\')
            i = unescape(text, i + 1, part);
        else if (!isBlank || !part.isEmpty())
            part += QLatin1Char(c);
        if (!isBlank)
            kept = static_cast<int>(part.size());
    }
    finish();
    return parts;
}

QVector<int> numbersIn(const QString &text)
{
    QVector<int> numbers;
    for (const QString &word : text.split(' '))
        numbers += word.toInt();
    return numbers;
}

bool isList(const QVariant &value)
{
    // To Qt 6 texts are lists of characters, too.
    const int type = value.userType();
    return type != QMetaType::QString && type != QMetaType::QByteArray
        && value.canConvert<QVariantList>();
}

QByteArray partsFor(const QVariantList &list);

QString textOf(const QVariant &value)
{
    if (isList(value)) {
        const QByteArray parts = partsFor(value.value<QVariantList>());
        return "@List(" + QString::fromLatin1(parts) + ')';
    }
    const QRect rect = value.toRect();
    const QPoint point = value.toPoint();
    const QSize size = value.toSize();
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return invalidText;
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return "@ByteArray(" + QString::fromLatin1(bytes.constData(), bytes.size()) + ')';
    }
    case QMetaType::QPoint:
        return QStringLiteral("@Point(%1 %2)").arg(point.x()).arg(point.y());
    case QMetaType::QSize:
        return QStringLiteral("@Size(%1 %2)").arg(size.width()).arg(size.height());
    case QMetaType::QRect:
        return QStringLiteral("@Rect(%1 %2 %3 %4)")
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height());
    default:
        const QString text = value.toString();
        return text.startsWith('@') ? '@' + text : text;
    }
}

QVariant listFrom(const QStringList &parts, int depth);

/// \param depth number of lists around the value
QVariant valueFrom(const QString &text, int depth = 0)
{
    if (text.startsWith(QLatin1String("@@")))
        return text.mid(1);
    if (text == invalidText)
        return {};
    const QString type = text.section('(', 0, 0);
    if (!text.startsWith('@') || !text.endsWith(')') || type == text)
        return text;
    const QString content = text.mid(type.size() + 1).chopped(1);
    if (type == QLatin1String("@ByteArray"))
        return content.toLatin1();
    if (type == QLatin1String("@String"))
        return content;
    if (type == QLatin1String("@List") && depth < deepestList)
        return listFrom(content.isEmpty() ? QStringList() : partsOf(content.toLatin1()), depth + 1);
    const QVector<int> numbers = numbersIn(content);
    if (type == QLatin1String("@Point") && numbers.size() == 2)
        return QPoint(numbers[0], numbers[1]);
    if (type == QLatin1String("@Size") && numbers.size() == 2)
        return QSize(numbers[0], numbers[1]);
    if (type == QLatin1String("@Rect") && numbers.size() == 4)
        return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
    return text;
}

QVariant listFrom(const QStringList &parts, int depth)
{
    QVariantList list;
    bool isText = true;
    for (const QString &part : parts) {
        list += valueFrom(part, depth);
        isText = isText && list.last().userType() == QMetaType::QString;
    }
    return isText ? QVariant(QVariant(list).toStringList()) : QVariant(list);
}

QByteArray partsFor(const QVariantList &list)
{
    QByteArray parts;
    for (const QVariant &element : list)
        parts += (parts.isEmpty() ? "" : ", ") + escapedText(textOf(element));
    return parts;
}

QByteArray lineOf(const QVariant &value)
{
    if (!isList(value))
        return escapedText(textOf(value));
    const auto list = value.value<QVariantList>();
    if (list.isEmpty())
        return listMark + invalidText.toLatin1();
    if (list.size() > 1)
        return partsFor(list);
    // The short form of a list of nothing is taken: it is an empty list.
    return list.first().isValid() ? listMark + partsFor(list) : escapedText(textOf(value));
}

QVariant valueOfLine(const QByteArray &line)
{
    const QStringList parts = partsOf(line);
    const bool isMarked = line.size() > listMark.size() && line.startsWith(listMark);
    if (parts.size() == 1 && !isMarked)
        return valueFrom(parts.first());
    return listFrom(parts.size() == 1 && parts.first() == invalidText ? QStringList() : parts, 1);
}

QString sectionFrom(const QByteArray &line)
{
    const QByteArray name = line.mid(1, line.indexOf(']') - 1);
    if (name == "General")
        return {};
    return (name == "%General" ? noSection : keyFrom(name)) + '/';
}

/// Under the key that QSettings makes of it; it would never ask for another.
void add(QSettings::SettingsMap &settings, const QString &key, const QByteArray &text)
{
    const QString normalized = key.split('/', Qt::SkipEmptyParts).join('/');
    if (!normalized.isEmpty())
        settings.insert(normalized, valueOfLine(text));
}

} // namespace

bool IniText::read(QIODevice &device, QSettings::SettingsMap &settings)
{
    QString section;
    for (const QByteArray &raw : device.readAll().split('\n')) {
        const QByteArray line = raw.trimmed();
        const auto equals = line.indexOf('=');
        if (line.startsWith('['))
            section = sectionFrom(line);
        else if (equals > 0 && !line.startsWith(';'))
            add(settings, section + keyFrom(line.left(equals).trimmed()), line.mid(equals + 1));
    }
    return true;
}

bool IniText::write(QIODevice &device, const QSettings::SettingsMap &settings)
{
    QMap<QString, QByteArray> sections;
    for (auto setting = settings.begin(); setting != settings.end(); ++setting) {
        const auto slash = setting.key().indexOf('/');
        const QString section = slash < 0 ? QString() : setting.key().left(slash);
        sections[section] +=
            escapedKey(setting.key().mid(slash + 1)) + '=' + lineOf(setting.value()) + '\n';
    }
    QByteArray text;
    for (auto section = sections.begin(); section != sections.end(); ++section) {
        const QByteArray name = section.key() == noSection ? "%General"
            : section.key().isEmpty()                      ? "General"
                                                           : escapedKey(section.key());
        text += (text.isEmpty() ? "[" : "\n[") + name + "]\n" + section.value();
    }
    // Flushed here, because QSaveFile of Qt 5.15 misses an error of the flush it does at the end.
    auto *file = qobject_cast<QFileDevice *>(&device);
    return device.write(text) == text.size() && (!file || file->flush());
}
