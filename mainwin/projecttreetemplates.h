#pragma once

class QTreeWidgetItem;
struct TemplateId;

/// Puts a template that was written under its well, or under "Global" of every well, among the wells of the project tree;
/// it is not added where it is already. \a was, whose place it takes, goes; a well that had that one checked has this
/// one checked. Wells of one name have one folder of templates, and so the same items.
void registerTemplate(QTreeWidgetItem *wells, const TemplateId &now, const TemplateId &was);
