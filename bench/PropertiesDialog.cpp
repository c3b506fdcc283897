#include "PropertiesDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace zv::bench {

namespace {

QString shown(const dwg::Text& text)
{
    return QString::fromStdU16String(text);
}

dwg::Text taken(const QString& text)
{
    return text.toStdU16String();
}

} // namespace

PropertiesDialog::PropertiesDialog(const dwg::Properties& properties, QWidget* parent)
    : QDialog(parent), m_properties(properties)
{
    setObjectName(QStringLiteral("DwgProps"));
    setWindowTitle(tr("Drawing Properties"));
    auto* const form = new QFormLayout(this);
    const auto line = [&](const char* name, const QString& label, const dwg::Text& text) {
        auto* const field = new QLineEdit(shown(text), this);
        field->setObjectName(QLatin1String(name));
        form->addRow(label, field);
        return field;
    };
    Title = line("Title", tr("&Title:"), properties.title);
    Subject = line("Subject", tr("&Subject:"), properties.subject);
    Author = line("Author", tr("&Author:"), properties.author);
    Keywords = line("Keywords", tr("&Keywords:"), properties.keywords);
    Comments = new QPlainTextEdit(shown(properties.comments), this);
    Comments->setObjectName(QStringLiteral("Comments"));
    form->addRow(tr("&Comments:"), Comments);
    QStringList lines;
    for (const auto& [name, value] : properties.custom)
        lines += shown(name) + QLatin1Char('=') + shown(value);
    Custom = new QPlainTextEdit(lines.join(QLatin1Char('\n')), this);
    Custom->setObjectName(QStringLiteral("Custom"));
    Custom->setPlaceholderText(tr("name=value"));
    form->addRow(tr("C&ustom:"), Custom);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    form->addRow(buttons);
    m_shown = typed();
}

/// What was not touched stays as it was, with line ends and whatever else the fields show otherwise.
dwg::Properties PropertiesDialog::properties() const
{
    const dwg::Properties now = typed();
    dwg::Properties changed = m_properties;
    for (const auto field : {&dwg::Properties::title, &dwg::Properties::subject, &dwg::Properties::author,
                             &dwg::Properties::keywords, &dwg::Properties::comments}) {
        if (now.*field != m_shown.*field)
            changed.*field = now.*field;
    }
    if (now.custom != m_shown.custom)
        changed.custom = now.custom;
    return changed;
}

dwg::Properties PropertiesDialog::typed() const
{
    dwg::Properties now;
    now.title = taken(Title->text());
    now.subject = taken(Subject->text());
    now.author = taken(Author->text());
    now.keywords = taken(Keywords->text());
    now.comments = taken(Comments->toPlainText());
    const QStringList lines = Custom->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines)
        now.custom.emplace_back(taken(line.section(QLatin1Char('='), 0, 0)),
                                taken(line.section(QLatin1Char('='), 1)));
    return now;
}

} // namespace zv::bench
