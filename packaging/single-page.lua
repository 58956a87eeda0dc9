-- SPDX-License-Identifier: GPL-3.0-or-later
-- For pandoc: in the one page of the user guide a link to another document of the tree is a link to
-- its place in the page. A link to a document that is not in the page fails the build.
local known = {}
for name in os.getenv("ORVANE_PAGE_DOCUMENTS"):gmatch("%S+") do
  known[name] = true
end

function Link(link)
  local name, fragment = link.target:match("([%w%.-]+)%.md(#?.*)$")
  if name == nil then
    return nil
  end
  if not known[name] then
    error("the page has no document " .. link.target)
  end
  link.target = fragment ~= "" and fragment or "#document-" .. name
  return link
end
