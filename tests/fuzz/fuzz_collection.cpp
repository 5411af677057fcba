// Any bytes as the collection's file.
#include "FuzzSupport.h"

#include "GradientCollection.h"

#include <sanitizer/lsan_interface.h>

namespace {

QJsonObject contentOf(const GradientCollection &collection)
{
    QJsonObject json;
    collection.write(json);
    return json;
}

/// Qt 5.15 leaks the containers that such a text leaves open.
void loadFrom(GradientCollection &collection)
{
    const __lsan::ScopedDisabler qtLeaks;
    collection.load();
}

bool isCollection(const QByteArray &text)
{
    const __lsan::ScopedDisabler qtLeaks;
    return QJsonDocument::fromJson(text).object()["gradients"].isArray();
}

void changeElsewhere(GradientCollection &collection)
{
    for (int number = 0; number < 2; ++number)
        collection.add(collection.newGradientShared());
    collection.remove(0);
    collection.getGradientAt(collection.size() / 2)->setMax(7.0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString path = startFuzzing() + "/gradients.json";
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<int>(size));
    writeFile(path, text);
    QFile::remove(path + ".damaged-1");

    GradientCollection collection(path);
    loadFrom(collection);
    require(isCollection(text) || text.isEmpty() || contentsOf(path + ".damaged-1") == text,
        "a damaged file is kept aside");

    const QJsonObject content = contentOf(collection);
    collection.save();
    GradientCollection stored(path);
    stored.load();
    require(contentOf(stored) == content, "what was read is what is saved");

    changeElsewhere(stored);
    const QByteArray changed = contentsOf(path);
    collection.refresh();
    require(contentOf(collection) == contentOf(stored), "what is unchanged here follows the file");
    collection.save();
    require(contentsOf(path) == changed, "without changes of others the file is what is here");
    return 0;
}
