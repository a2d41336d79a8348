#pragma once

#include "platform/word/model/Document.h"
#include "platform/word/model/Selection.h"
#include "platform/word/model/Window.h"

#include <filesystem>
#include <memory>

// The object model of a word processor that the generation logic is written against. Positions
// are characters of the main story, counted from 0; lengths are points unless a name says
// otherwise. Every operation may throw RunTimeError: 462 when the server is gone, 5941 when a
// requested member does not exist, 0x800706BE for a failed remote call, any other number with a
// description to show. References stay valid until the Application quits.
namespace qvnd::word {

class Documents {
public:
    virtual ~Documents() = default;

    // A new empty document, active, based on the normal template.
    virtual Document& Add() = 0;
    // A new document based on the file as a template.
    virtual Document& Add(const std::filesystem::path& path) = 0;
    // Opens a file; one that is open already is returned as it is.
    virtual Document& Open(const std::filesystem::path& path) = 0;
};

class Application {
public:
    virtual ~Application() = default;

    virtual Documents& documents() = 0;
    virtual Document& ActiveDocument() = 0;
    virtual Window& ActiveWindow() = 0;
    virtual word::Selection& Selection() = 0;

    virtual void setVisible(bool visible) = 0;
    virtual float CentimetersToPoints(float centimetres) = 0;
    virtual void Activate() = 0;
    // Ends the server; asks to save when a document is changed and not marked saved.
    virtual void Quit() = 0;
};

// Creates a new, invisible, independent server ("Word.Application").
class ApplicationFactory {
public:
    virtual ~ApplicationFactory() = default;
    virtual std::unique_ptr<Application> create() = 0;
};

} // namespace qvnd::word
