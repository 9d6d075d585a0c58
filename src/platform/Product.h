#pragma once

#include <QString>

/// What the build has fixed about the program (cmake/Product.cmake).
namespace Product {

QString version();
/// Counts the builds of one version; digits.
QString buildNumber();
/// The address of its page on the web.
QString webAddress();
/// Where questions about it are sent.
QString mailAddress();

}  // namespace Product
