-- SPDX-License-Identifier: MIT
-- Makes a page of the manual from one of docs/: "NAME" and "SYNOPSIS" come from pages.txt, what stands before the first
-- heading is the description, headings move up a level, tables become lists of terms, and links between pages references
-- to the manual, which are gathered in "SEE ALSO". Which page it is, the variables `page` (NAME.SECTION) and `pages` (the list's path) say.

local pages = {} -- by source: {name, section, description, synopsis}
local this

local function trimmed(text)
  return (text:gsub('^%s+', ''):gsub('%s+$', ''))
end

local function readPages(path)
  for line in io.lines(path) do
    local fields = {}
    if not line:match('^#') then
      -- A bar within a synopsis has no blanks around it.
      for field in (line .. ' | '):gmatch('(.-) | ') do
        fields[#fields + 1] = trimmed(field)
      end
    end
    if fields[1] then
      local name, section = fields[1]:match('^(.+)%.(%d)$')
      pages[fields[2]] = { name = name, section = section, description = fields[3], synopsis = fields[4] }
    end
  end
end

local function reference(page)
  return pandoc.Strong(page.name), pandoc.Str('(' .. page.section .. ')')
end

-- The path below docs/ that a link of this page means: its own source may lie in a folder there.
local function belowDocs(target)
  local path = target:gsub('#.*$', '')
  if this.source:match('^man/') then
    return path:match('^%.%./(.*)$') or 'man/' .. path
  end
  return path
end

local mentioned = {}

local function Link(link)
  if link.target:match('^%a+://') or link.target:match('^#') then
    return link.target:match('^#') and link.content or link
  end
  local page = pages[belowDocs(link.target)]
  if page and page ~= this then
    mentioned[page.name .. page.section] = page
    local name, section = reference(page)
    -- Where the link's own words are a name already, the page's says it all.
    local words = pandoc.utils.stringify(link.content)
    if words:match('%.md$') or words:lower() == page.name then
      return { name, section }
    end
    local inlines = link.content:clone()
    inlines:extend({ pandoc.Space(), pandoc.Str('('), name, pandoc.Str('(' .. page.section .. '))') })
    return inlines
  end
  return link.content
end

-- Pictures are for the other form of the page.
local function Image(_)
  return {}
end

-- A terminal is narrow: each row becomes a term, its first cell, and what the other cells say of it. Of several the
-- columns' names are told.
local function Table(table)
  local simple = pandoc.utils.to_simple_table(table)
  local items = pandoc.List()
  for _, row in ipairs(simple.rows) do
    local about = pandoc.List()
    for column = 2, #row do
      local said = pandoc.utils.blocks_to_inlines(row[column])
      local title = simple.headers[column] or {}
      if #said > 0 and #title > 0 and #row > 2 then
        said:insert(1, pandoc.Emph(pandoc.utils.stringify(title) .. ':'))
        said:insert(2, pandoc.Space())
      end
      if #said > 0 then
        about:insert(pandoc.Para(said))
      end
    end
    items:insert({ pandoc.utils.blocks_to_inlines(row[1]), { about } })
  end
  return pandoc.DefinitionList(items)
end

local function heading(text)
  return pandoc.Header(1, pandoc.Inlines(text:upper()))
end

local function synopsis()
  local lines = pandoc.List()
  for call in (this.synopsis .. ';'):gmatch('%s*(.-);') do
    if #lines > 0 then
      lines:insert(pandoc.LineBreak())
    end
    lines:insert(pandoc.Str(call))
  end
  return pandoc.Para(lines)
end

local function seeAlso()
  local names = pandoc.List()
  for _, page in pairs(mentioned) do
    names:insert(page)
  end
  names:sort(function(a, b) return a.section .. a.name < b.section .. b.name end)
  local inlines = pandoc.List()
  for index, page in ipairs(names) do
    if index > 1 then
      inlines:extend({ pandoc.Str(','), pandoc.Space() })
    end
    inlines:extend({ reference(page) })
  end
  return inlines
end

local function Pandoc(document)
  readPages(document.meta.pages)
  for source, page in pairs(pages) do
    page.source = source
    if page.name .. '.' .. page.section == document.meta.page then
      this = page
    end
  end
  local body = document.blocks:walk({ Link = Link, Image = Image, Table = Table })
  local blocks = pandoc.List({
    heading('Name'), pandoc.Para({ pandoc.Str(this.name), pandoc.Str(' - '), pandoc.Str(this.description) }),
  })
  if this.synopsis then
    blocks:extend({ heading('Synopsis'), synopsis() })
  end
  blocks:insert(heading('Description'))
  for _, block in ipairs(body) do
    if block.t ~= 'Header' then
      blocks:insert(block)
    elseif block.level == 2 then
      blocks:insert(heading(pandoc.utils.stringify(block)))
    elseif block.level > 2 then
      blocks:insert(pandoc.Header(2, block.content))
    end
  end
  local others = seeAlso()
  if #others > 0 then
    blocks:extend({ heading('See also'), pandoc.Para(others) })
  end
  document.meta = {
    title = this.name:upper(), section = this.section, header = 'Dozely', footer = 'Dozely ' .. document.meta.version,
    adjusting = 'l',
  }
  document.blocks = blocks
  return document
end

return { { Pandoc = Pandoc } }
