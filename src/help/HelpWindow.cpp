#include "help/HelpWindow.h"

#include "controls/ImageList.h"

#include <QBuffer>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <cmath>
#include <cstdlib>

namespace zv {
namespace {

constexpr int kPageRole = Qt::UserRole;
const QSize kFirstSize(1120, 740);

QString text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

/// The colour of links, or one that can be read where a dark palette has left theirs as it was.
QColor linkColor(const QPalette& palette)
{
    constexpr int kLeastContrast = 70;
    const QColor link = palette.color(QPalette::Link);
    const int contrast = std::abs(qGray(link.rgb()) - qGray(palette.color(QPalette::Base).rgb()));
    return contrast < kLeastContrast ? accentColor() : link;
}

/// Pages and pictures come from the book; an address outside it leads nowhere. Pictures that are too wide for
/// the page shrink with it.
class BookBrowser : public QTextBrowser {
public:
    explicit BookBrowser(const HelpBook& book) : m_book(book)
    {
        setOpenExternalLinks(false);
        setWordWrapMode(QTextOption::WordWrap);
    }

protected:
    QVariant loadResource(int type, const QUrl& name) override
    {
        const QUrl whole = source().resolved(name);
        if (whole.scheme() != QStringLiteral("book"))
            return {};
        const Result<std::string> bytes = m_book.file(whole.path().toStdString());
        if (!bytes)
            return {};
        const QByteArray content(bytes->data(), static_cast<qsizetype>(bytes->size()));
        if (type == QTextDocument::HtmlResource || type == QTextDocument::StyleSheetResource)
            return QString::fromUtf8(content);
        return content;
    }

    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override
    {
        const QUrl whole = source().resolved(name);
        if (whole.scheme() != QStringLiteral("book") || !m_book.file(whole.path().toStdString()))
            return;
        document()->setDefaultStyleSheet(QStringLiteral("a { color: %1; }").arg(linkColor(palette()).name()));
        QTextBrowser::doSetSource(whole, type);
        fitPictures();
    }

    void resizeEvent(QResizeEvent* event) override
    {
        QTextBrowser::resizeEvent(event);
        fitPictures();
    }

private:
    /// Width for a picture, the same with and without a scroll bar so that neither brings the other about.
    int room(const QTextBlockFormat& block) const
    {
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        const double margins = 2 * document()->documentMargin() + block.leftMargin() + block.rightMargin();
        return contentsRect().width() - bar - int(std::ceil(margins));
    }

    void fitPictures()
    {
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part)
                if (part.fragment().charFormat().isImageFormat())
                    fitPicture(part.fragment(), room(block.blockFormat()));
    }

    void fitPicture(const QTextFragment& fragment, int room)
    {
        QTextImageFormat format = fragment.charFormat().toImageFormat();
        QByteArray bytes = loadResource(QTextDocument::ImageResource, QUrl(format.name())).toByteArray();
        QBuffer file(&bytes);
        const QSize natural = QImageReader(&file).size();
        const QSize fitting = natural.width() > room ? natural * (double(room) / natural.width()) : natural;
        if (fitting.isEmpty() || fitting.width() == int(format.width()))
            return;
        format.setWidth(fitting.width());
        format.setHeight(fitting.height());
        QTextCursor cursor(document());
        cursor.setPosition(fragment.position());
        cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }

    const HelpBook& m_book;
};

QUrl addressOf(const QString& page)
{
    return QUrl(QStringLiteral("book:///")).resolved(QUrl(page));
}

QString pageOf(const QUrl& address)
{
    QString page = address.path().mid(1);
    if (address.hasFragment())
        page += QLatin1Char('#') + address.fragment();
    return page;
}

template <class Widget> Widget* named(Widget* widget, const char* name, const QString& accessibleName)
{
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(accessibleName);
    return widget;
}

} // namespace

HelpWindow::HelpWindow(std::unique_ptr<HelpBook> book) : m_book(std::move(book))
{
    setObjectName(QStringLiteral("HelpWindow"));
    setWindowTitle(m_book->title().empty() ? tr("Help") : text(m_book->title()));
    setWindowIcon(namedPicture(QStringLiteral("help")));
    // The run ends with the program's windows; the help goes with them.
    setAttribute(Qt::WA_QuitOnClose, false);

    m_page = named<QTextBrowser>(new BookBrowser(*m_book), "HelpPage", tr("Page"));
    m_sides = named(new QTabWidget, "HelpSides", tr("Contents, index and search"));
    m_sides->addTab(contentsSide(), tr("&Contents"));
    m_sides->addTab(indexSide(), tr("I&ndex"));
    m_sides->addTab(searchSide(), tr("&Search"));

    // However small the window, each of the three lists can be reached.
    m_sides->setMinimumWidth(m_sides->tabBar()->sizeHint().width());

    auto* splitter = new QSplitter;
    splitter->addWidget(m_sides);
    splitter->addWidget(m_page);
    splitter->setStretchFactor(0, 2);
    splitter->setStretchFactor(1, 5);
    setCentralWidget(splitter);
    addTools();
    connect(m_page, &QTextBrowser::sourceChanged, this, &HelpWindow::pageChanged);
    resize(kFirstSize);
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::showSide(Side side)
{
    m_sides->setCurrentIndex(static_cast<int>(side));
    QWidget* const first[] = {m_contents, m_indexText, m_searchText};
    first[static_cast<int>(side)]->setFocus();
}

void HelpWindow::showHome()
{
    showPage(text(m_book->home()));
}

void HelpWindow::showPage(const QString& page)
{
    if (!page.isEmpty())
        m_page->setSource(addressOf(page));
}

QWidget* HelpWindow::contentsSide()
{
    m_contents = named(new QTreeWidget, "HelpContents", tr("Contents"));
    m_contents->setHeaderHidden(true);
    addContents(m_book->contents(), m_contents->invisibleRootItem());
    m_contents->expandAll();
    connect(m_contents, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item != nullptr && !m_following)
            showPage(item->data(0, kPageRole).toString());
    });
    return m_contents;
}

void HelpWindow::addContents(const std::vector<HelpEntry>& entries, QTreeWidgetItem* parent)
{
    for (const HelpEntry& entry : entries) {
        auto* item = new QTreeWidgetItem(parent, {text(entry.title)});
        item->setData(0, kPageRole, text(entry.page));
        item->setToolTip(0, text(entry.title));
        addContents(entry.children, item);
    }
}

QWidget* HelpWindow::indexSide()
{
    m_indexText = named(new QLineEdit, "HelpIndexText", tr("Keyword"));
    m_indexText->setPlaceholderText(tr("First letters of a keyword"));
    m_index = named(new QListWidget, "HelpIndex", tr("Keywords"));
    for (const HelpEntry& entry : m_book->index()) {
        auto* item = new QListWidgetItem(text(entry.title), m_index);
        item->setData(kPageRole, text(entry.page));
    }
    const auto open = [this](QListWidgetItem* item) {
        if (item != nullptr)
            showPage(item->data(kPageRole).toString());
    };
    connect(m_index, &QListWidget::currentItemChanged, this, open);
    connect(m_indexText, &QLineEdit::textEdited, this, &HelpWindow::chooseIndexed);

    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    column->addWidget(m_indexText);
    column->addWidget(m_index);
    return side;
}

void HelpWindow::chooseIndexed(const QString& start)
{
    const QList<QListWidgetItem*> matches = m_index->findItems(start, Qt::MatchStartsWith);
    if (!start.isEmpty() && !matches.isEmpty())
        m_index->setCurrentItem(matches.first());
}

QWidget* HelpWindow::searchSide()
{
    m_searchText = named(new QLineEdit, "HelpSearchText", tr("Words to search for"));
    m_searchText->setPlaceholderText(tr("Words to search for"));
    auto* start = named(new QPushButton(tr("&Find")), "HelpSearchStart", tr("Find"));
    m_results = named(new QListWidget, "HelpResults", tr("Pages found"));
    connect(m_searchText, &QLineEdit::returnPressed, this, &HelpWindow::search);
    connect(start, &QPushButton::clicked, this, &HelpWindow::search);
    connect(m_results, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item != nullptr)
            showPage(item->data(kPageRole).toString());
    });

    auto* side = new QWidget;
    auto* column = new QVBoxLayout(side);
    auto* row = new QHBoxLayout;
    row->addWidget(m_searchText);
    row->addWidget(start);
    column->addLayout(row);
    column->addWidget(m_results);
    return side;
}

void HelpWindow::search()
{
    m_results->clear();
    for (const HelpFinding& finding : m_book->search(m_searchText->text().toStdString())) {
        auto* item = new QListWidgetItem(text(finding.title), m_results);
        item->setData(kPageRole, text(finding.page));
    }
    if (m_results->count() == 0) {
        auto* none = new QListWidgetItem(tr("No page holds all of these words."), m_results);
        none->setFlags(Qt::NoItemFlags);
    }
}

void HelpWindow::addTools()
{
    QToolBar* bar = addToolBar(tr("Pages"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [&](const char* name, const QString& caption, const char* picture, QKeySequence keys) {
        QAction* action = bar->addAction(namedPicture(QLatin1String(picture)), caption);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        QWidget* button = bar->widgetForAction(action);
        button->setObjectName(QLatin1String(name));
        button->setFocusPolicy(Qt::TabFocus);
        return action;
    };
    QAction* back = add("HelpBack", tr("Back"), "previous", QKeySequence(Qt::ALT | Qt::Key_Left));
    QAction* forward = add("HelpForward", tr("Forward"), "next", QKeySequence(Qt::ALT | Qt::Key_Right));
    QAction* home = add("HelpHome", tr("First Page"), "help", QKeySequence(Qt::ALT | Qt::Key_Home));
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QAction::triggered, m_page, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, m_page, &QTextBrowser::forward);
    connect(home, &QAction::triggered, this, &HelpWindow::showHome);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_page, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

void HelpWindow::pageChanged(const QUrl& address)
{
    // Links and the two other lists lead to pages too; the contents show where one is.
    const QScopedValueRollback<bool> following(m_following, true);
    const QString page = pageOf(address);
    for (QTreeWidgetItemIterator item(m_contents); *item != nullptr; ++item)
        if ((*item)->data(0, kPageRole).toString() == page)
            m_contents->setCurrentItem(*item);
}

} // namespace zv
