-- What the printed book and a narrow screen need to know of the text, which Markdown has no words for.

-- A table of so few letters that it fits on any page with its neighbours is kept in one piece.
local short = 900

-- A cell is told its column's title: on a narrow screen rows are shown one below the other, without the
-- table's head.
function Table(tbl)
    local titles = {}
    for _, row in ipairs(tbl.head.rows) do
        for i, cell in ipairs(row.cells) do
            titles[i] = pandoc.utils.stringify(cell.contents)
        end
    end
    local letters = 0
    for _, body in ipairs(tbl.bodies) do
        for _, row in ipairs(body.body) do
            for i, cell in ipairs(row.cells) do
                cell.attr.attributes["data-label"] = titles[i]
                letters = letters + utf8.len(pandoc.utils.stringify(cell.contents))
            end
        end
    end
    if letters < short then
        tbl.attr.classes:insert("kurz")
    end
    -- Otherwise long names of columns would push the table out of the page.
    if tbl.colspecs[1][2] then
        tbl.attr.classes:insert("fest")
    end
    return tbl
end

local announced = { Table = true, BulletList = true, OrderedList = true, BlockQuote = true, Para = true }

-- A line that announces what follows stays with it.
function Blocks(blocks)
    for i = 1, #blocks - 1 do
        local block, following = blocks[i], blocks[i + 1]
        if block.t == "Para" and announced[following.t] and pandoc.utils.stringify(block):match(":$") then
            blocks[i] = pandoc.Div({ block }, pandoc.Attr("", { "ansage" }))
        end
    end
    return blocks
end
