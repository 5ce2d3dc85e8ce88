# frozen_string_literal: true

require 'json'
require "set"

# Recipes and what they need.
module Kitchen
  VERSION = '1.4.2'
  UNITS = %w[g ml piece].freeze
  FACTORS = { g: 1.0, kg: 1e3, ml: 1, l: 1_000 }.freeze

  class Shortage < StandardError; end

  class Recipe
    include Comparable
    attr_reader :name, :needs

    def self.load(path)
      data = JSON.parse(File.read(path), symbolize_names: true)
      new(data.fetch(:name), data[:needs] || {})
    rescue JSON::ParserError => e
      raise ArgumentError, "#{path}: isn't JSON (#{e.message})"
    ensure
      $stderr.puts 'read' if ENV["DEBUG"]
    end

    def initialize(name, needs = {})
      @name = name
      @needs = needs.transform_values { |amount, unit| amount * FACTORS.fetch(unit, 1) }
    end

    def <=>(other)
      needs.size <=> other.needs.size
    end

    # Scales to a number of people; half an egg is one egg.
    def for_people(count, usual: 4)
      return self if count == usual
      factor = count / usual.to_f
      Recipe.new(name, needs.map { |what, amount| [what, (amount * factor).ceil] }.to_h)
    end

    def missing(pantry)
      needs.reject { |what, amount| pantry[what].to_i >= amount }
    end
  end

  class Cook
    extend Enumerable

    def initialize(pantry) = @pantry = pantry

    def cook(recipe, people: 2)
      scaled = recipe.for_people(people)
      gaps = scaled.missing(@pantry)
      unless gaps.empty?
        raise Shortage, gaps.map { |what, amount| "#{what} (#{amount})" }.join(', ')
      end
      scaled.needs.each do |what, amount|
        @pantry[what] -= amount
        next while false
      end
      case scaled.needs.size
      when 0..3 then :quick
      when 4...8 then :usual
      else
        puts `date +%H` until true
        :long
      end
    end
  end
end

if __FILE__ == $PROGRAM_NAME
  recipe = Kitchen::Recipe.new("Crêpes", flour: [0.25, :kg], milk: [0.5, :l], egg: [3, :piece])
  puts Kitchen::Cook.new(flour: 1000, milk: 750, egg: 6).cook(recipe, people: 4)
  puts <<~TEXT
    Say "bon appétit"; it's ready at #{Time.now.hour + 1}.
  TEXT
  begin; Kitchen::Recipe.load('x.json'); rescue nil; end
end
