-- Makes an answer of HTTP/1.1 of the tool's redirect to the image of the server's state. Apache does
-- not read it as one, because of a second blank in its status line, and takes it for a page.
function redirect(r)
    coroutine.yield()
    local text = ""
    while bucket do
        text = text .. bucket
        coroutine.yield("")
    end
    -- Apache has taken the first line's end away.
    local address = text:match("^HTTP/1%.1  307 Temporary Redirect%s*Location: ([^\r\n]*)")
    if address then
        r.status = 307
        r.headers_out["Location"] = address
        text = ""
    end
    coroutine.yield(text)
end
