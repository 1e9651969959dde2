#ifndef EMBEDDED_WINDOWS_H
#define EMBEDDED_WINDOWS_H

#include "ExportedByCatia.h"
#include "embedded/Session.h"

#include <cstddef>
#include <string>
#include <vector>

class CATFrmWindow;
class CATPathElement;

namespace embedded {

class WindowObject;
struct FrameData;

/** What a window is, by its class. */
enum class WindowKind {
    graphic, ///< tree over geometry ("CATFrmNavigGraphicWindow"); can be centred
    plain,   ///< anything else ("CATFrmWindow"), such as a drawing sheet
    desk     ///< the documents and their links ("CATDeskWindow"); shows no editor
};

/** A window of the session. A light name for it: calls on a name of nothing do nothing and answer nothing. */
class ExportedByCatia Window {
public:
    explicit Window(WindowObject* object = nullptr) : m_object(object) {}
    explicit operator bool() const { return m_object != nullptr; }
    friend bool operator==(const Window& a, const Window& b) { return a.m_object == b.m_object; }
    /** The platform's pointer. No reference is added. */
    CATFrmWindow* get() const;
    WindowObject* object() const { return m_object; }

    WindowKind kind() const;
    /** None when the window has no editor, or its editor no document. */
    Document document() const;
    Window& minimised(bool value);
    bool minimised() const;
    /** The window does not hold its document, like one that is just being closed: unlocking may close the document. */
    Window& withoutHold();
    /** A graphic window that has no navigation box yet. */
    Window& withoutNavigationBox();

private:
    WindowObject* m_object;
};

/**
 * The way to a selected object, from the root of the document down. Reads like the way it is:
 *
 *     SelectionPath().product(root).product(part).feature("Pad")
 */
class ExportedByCatia SelectionPath {
public:
    struct Item {
        enum class Kind { product, document, feature, object, designTable };
        Kind kind;
        Product shown;       ///< of Kind::product
        Document opened;     ///< of Kind::document and Kind::designTable
        std::string type;    ///< class name, of Kind::feature and Kind::object; name of a design table
        std::string derived; ///< class that the type is a kind of; may be empty
    };

    SelectionPath() = default;
    /** The way to a product through all products above it. */
    explicit SelectionPath(const Product& selected);

    SelectionPath& product(const Product& product);
    /** A document as part of the way, such as a visualisation file that shows the product above it. */
    SelectionPath& document(const Document& document);
    /** A feature of a part. */
    SelectionPath& feature(const std::string& type);
    /** Any other object. @param derived class that the type derives from; may be empty */
    SelectionPath& object(const std::string& type, const std::string& derived = {});
    /** The first design table of that name in a document. */
    SelectionPath& designTable(const Document& document, const std::string& name);

    const std::vector<Item>& items() const { return m_items; }

private:
    std::vector<Item> m_items;
};

/** The windows of the one session with their editors, what is selected in each editor, and the application around
 * them. One editor a document, however many windows show it. */
class ExportedByCatia Windows {
public:
    static Windows current();

    /** A new window of a document. It becomes the active one. */
    Window open(const Document& document, WindowKind kind = WindowKind::graphic);
    /** A new window whose editor has no document, such as a start page. It becomes the active one. */
    Window openEmpty(WindowKind kind = WindowKind::plain);
    /** A new window without an editor. It becomes the active one. */
    Window openWithoutEditor(WindowKind kind = WindowKind::plain);
    Window openDesk() { return openWithoutEditor(WindowKind::desk); }
    /** Closes a window, and a document that nobody holds any more. The window that was active before becomes the active
     * one when this one was. */
    void close(const Window& window);

    std::size_t count() const;
    /** In the order of opening, from 0. */
    Window at(std::size_t index) const;
    /** The active window's editor is the current one. */
    void activate(const Window& window);
    Window active() const;
    /** Whether the platform was told to open the document for reading only. */
    bool openedReadOnly(const Document& document) const;
    /** The application shows no windows at all / its windows, but no current editor. */
    Windows& withoutLayout();
    Windows& withoutCurrentEditor();
    /** There is no current session until somebody makes one. */
    Windows& withoutSession();

    /** Adds to what is selected in the active window's editor; without one nothing happens. */
    void select(const SelectionPath& path);
    void select(const Product& product) { select(SelectionPath(product)); }
    std::size_t selectedCount() const;
    /** The platform's pointer of a selected element, from 0; null outside. No reference is added. */
    CATPathElement* selected(std::size_t index) const;
    void clearSelection();
    /** The active window's editor has no selection object. */
    Windows& withoutSelection();

    /** A text of the message catalogue in the user's language; an empty one removes it. */
    void message(const std::string& catalogue, const std::string& key, const std::string& text);

    /** Commands started, by title. */
    std::vector<std::string>& startedCommands();
    /** What trees were centred on, "OnCSO /w/Root.CATProduct". */
    std::vector<std::string>& centred();

    /** Locks on a document, beside the hold of its windows and of the documents that use it. */
    void lock(const Document& document);
    int locks(const Document& document) const;

private:
    explicit Windows(FrameData& data) : m_data(&data) {}

    FrameData* m_data;
};

} // namespace embedded

#endif
