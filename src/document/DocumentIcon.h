#pragma once

/// The icon of a document's tab, as SetDocIcon() takes it.
enum DocumentIcon { NormalIcon, ChangedIcon, ReadOnlyIcon };
