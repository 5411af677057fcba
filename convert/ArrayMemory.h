#pragma once

#include <vtkSmartPointer.h>
#include <vtkType.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>

/// An array of undefined content, never over a null pointer. VTK's own allocation tells the console
/// when it fails.
/// \throws std::bad_alloc when there is no memory for it
template <class Array> vtkSmartPointer<Array> freshArray(vtkIdType tuples, int components)
{
    using Value = typename Array::ValueType;
    auto array = vtkSmartPointer<Array>::New();
    array->SetNumberOfComponents(components);
    const vtkIdType size = tuples * components;
    // Not from new[]: VTK shrinks what comes from malloc() in place.
    void *const memory =
        std::malloc(std::max<std::size_t>(static_cast<std::size_t>(size) * sizeof(Value), 1));
    if (!memory)
        throw std::bad_alloc();
    array->SetArray(static_cast<Value *>(memory), size, 0, Array::VTK_DATA_ARRAY_FREE);
    return array;
}

/// Sets the number of tuples within the array's memory and keeps all of that, which VTK lets go of
/// for 0 tuples.
template <class Array> void resizeWithin(Array &array, vtkIdType tuples)
{
    array.Reset();
    if (tuples > 0)
        array.SetNumberOfTuples(tuples);
}
