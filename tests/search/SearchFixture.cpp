#include "search/SearchFixture.h"

#include "drawing/Writer.h"
#include "platform/Text.h"

#include <QLineEdit>
#include <QTimer>

namespace zv {

SearchFixture::SearchFixture()
{
    makeDoors(3);
}

std::string SearchFixture::makeKeyworded(const std::string& name, const std::string& keywords)
{
    dwg::Properties properties;
    properties.comments = wide("About " + name);
    properties.keywords = wide(keywords);
    properties.custom = {{u"scale", u"48"}};
    const auto bytes = dwg::writeDocument({}, {properties, {}});
    EXPECT_TRUE(bytes);
    return folder.write("drawings/" + name + ".dwg", bytes.valueOr({}));
}

Search& SearchFixture::open()
{
    if (!program->loaded(QStringLiteral("Zelvora")))
        start();
    EXPECT_TRUE(click(QStringLiteral("Command4")));
    EXPECT_TRUE(appears(QStringLiteral("Search")));
    return search();
}

Search& SearchFixture::search()
{
    return *static_cast<Search*>(program->loaded(QStringLiteral("Search")));
}

void SearchFixture::find(const QString& keyword, const QString& library)
{
    search().Text1->setText(keyword);
    search().Combo1->setShownText(library);
    EXPECT_TRUE(press("Command11"));
}

bool SearchFixture::isBold(const char* name)
{
    return control(QLatin1String(name), QStringLiteral("Search"))->font().bold();
}

void SearchFixture::inATurn(const std::function<void()>& handler)
{
    QTimer::singleShot(0, program.get(), handler);
}

QString SearchFixture::picture(const char* name)
{
    return control(QLatin1String(name), QStringLiteral("Search"))->property("picture").toString();
}

QColor SearchFixture::ground(const char* name)
{
    return control(QLatin1String(name), QStringLiteral("Search"))->palette().color(QPalette::Base);
}

} // namespace zv
